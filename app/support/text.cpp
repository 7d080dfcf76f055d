#include "text.h"

#include <algorithm>

namespace vemoapp {

std::string upperCase(std::string_view text) {
    std::string result(text);
    for (char& letter : result) {
        if (letter >= 'a' && letter <= 'z') {
            letter = static_cast<char>(letter - 'a' + 'A');
        }
    }
    return result;
}

std::string_view trimmed(std::string_view text) {
    const auto isBlank = [](char letter) { return letter == ' ' || letter == '\t'; };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::vector<std::string> splitWords(std::string_view line) {
    std::vector<std::string> words;
    bool inWord = false;
    bool quoted = false;
    for (char letter : line) {
        bool separates = !quoted && (letter == ' ' || letter == '\t');
        if (separates) {
            inWord = false;
            continue;
        }
        if (!inWord) {
            words.emplace_back();
            inWord = true;
        }
        if (letter == '"') {
            quoted = !quoted;
        } else {
            words.back().push_back(letter);
        }
    }
    return words;
}

std::string joined(const std::vector<std::string>& items, std::string_view separator,
                   std::size_t limit) {
    std::string text;
    std::size_t shown = std::min(items.size(), limit);
    for (std::size_t index = 0; index < shown; ++index) {
        if (index > 0) {
            text += separator;
        }
        text += items[index];
    }
    if (shown < items.size()) {
        text += " and " + std::to_string(items.size() - shown) + " more";
    }
    return text;
}

void appendUtf8(std::string& text, char32_t codePoint) {
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        codePoint = 0xFFFD;
    }
    auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

}  // namespace vemoapp
