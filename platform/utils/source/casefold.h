// File names without regard to case, whatever the process's locale is.
#pragma once

#include <string>
#include <string_view>

/// Puts the UTF-8 text into `folded`, one lower-case code point an element. A byte that is part of
/// no well-formed character becomes an element of its own that equals that byte alone, so that two
/// names with such bytes are equal when they are the same.
void foldCase(std::string_view text, std::u32string& folded);
std::u32string foldCase(std::string_view text);
