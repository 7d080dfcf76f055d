#include "casefold.h"

#include <clocale>
#include <cwctype>

#include <locale.h>
#include <wctype.h>

namespace {

constexpr char32_t kFirstIllFormed = 0x110000;

struct Character {
    char32_t codePoint;
    std::size_t length;
};

/// The first character of a text that isn't empty.
Character decode(std::string_view text) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(text[0]);
    const Character illFormed = {kFirstIllFormed + lead, 1};
    const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc2 || lead > 0xf4 || length > text.size()) {
        return illFormed;
    }
    char32_t codePoint = lead & (0x7fu >> length);
    for (std::size_t index = 1; index < length; ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if ((byte & 0xc0) != 0x80) {
            return illFormed;
        }
        codePoint = codePoint << 6 | (byte & 0x3fu);
    }
    const bool isSurrogate = codePoint >= 0xd800 && codePoint <= 0xdfff;
    const bool isCharacter =
        codePoint >= kSmallest[length] && codePoint < kFirstIllFormed && !isSurrogate;
    return isCharacter ? Character{codePoint, length} : illFormed;
}

char32_t lowerCase(char32_t character) {
    // A locale of our own: that of the process knows ASCII alone when it is "C".
    static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const auto wide = static_cast<wint_t>(character);
    return static_cast<char32_t>(unicode ? ::towlower_l(wide, unicode) : std::towlower(wide));
}

}  // namespace

void foldCase(std::string_view text, std::u32string& folded) {
    folded.clear();
    while (!text.empty()) {
        const auto byte = static_cast<unsigned char>(text[0]);
        if (byte < 0x80) {
            folded += byte >= 'A' && byte <= 'Z' ? byte + 0x20u : byte;
            text.remove_prefix(1);
            continue;
        }
        const auto [codePoint, length] = decode(text);
        folded += codePoint < kFirstIllFormed ? lowerCase(codePoint) : codePoint;
        text.remove_prefix(length);
    }
}

std::u32string foldCase(std::string_view text) {
    std::u32string folded;
    foldCase(text, folded);
    return folded;
}
