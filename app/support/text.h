// Small helpers for texts. Letters are ASCII letters; other bytes are left alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vemoapp {

std::string upperCase(std::string_view text);

/// The text without blanks and tabs at its ends.
std::string_view trimmed(std::string_view text);

/// The words of a line; double quotes keep blanks together and are dropped.
std::vector<std::string> splitWords(std::string_view line);

/// The items with the separator between them. Beyond `limit` items the rest is counted: "and 3
/// more".
std::string joined(const std::vector<std::string>& items, std::string_view separator,
                   std::size_t limit);

/// Appends a code point as UTF-8; what is no code point becomes U+FFFD.
void appendUtf8(std::string& text, char32_t codePoint);

}  // namespace vemoapp
