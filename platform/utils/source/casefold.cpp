#include "casefold.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr char32_t kFirstIllFormed = 0x110000;

struct Character {
    char32_t codePoint;
    std::size_t length;
};

/// The first character of a text that begins with no ASCII character.
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

constexpr char lowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                                : character;
}

bool isAscii(char character) {
    return (character & 0x80) == 0;
}

constexpr std::uint64_t inEachByte(std::uint8_t value) {
    return 0x0101010101010101u * value;
}

// Eight characters. The sums set a byte's highest bit from "A" on, and behind "Z"; the bit that
// makes a small letter stands two below it.
std::uint64_t foldAsciiBlock(std::uint64_t block) {
    const std::uint64_t fromA = block + inEachByte(0x80 - 'A');
    const std::uint64_t behindZ = block + inEachByte(0x80 - 'Z' - 1);
    return block | (fromA & ~behindZ & inEachByte(0x80)) >> 2;
}

// Folds the text's front as far as it is ASCII, block by block, and gives its length. The last
// block is the text's rest.
std::size_t foldAsciiBlocks(std::string_view text, char* folded) {
    std::size_t at = 0;
    while (at < text.size()) {
        std::uint64_t block = 0;
        const std::size_t size = std::min(text.size() - at, sizeof block);
        std::memcpy(&block, text.data() + at, size);
        if ((block & inEachByte(0x80)) != 0) {
            break;
        }
        block = foldAsciiBlock(block);
        std::memcpy(folded + at, &block, size);
        at += size;
    }
    return at;
}

char32_t lowerCase(char32_t character) {
    if (character >= kFirstIllFormed) {
        return character;
    }
    // A locale of our own: that of the process knows ASCII alone when it is "C".
    static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const auto wide = static_cast<wint_t>(character);
    return static_cast<char32_t>(unicode ? ::towlower_l(wide, unicode) : ::towlower(wide));
}

void append(char32_t codePoint, std::string& text) {
    const auto trailing = [&](unsigned shift) {
        text += static_cast<char>(0x80 | ((codePoint >> shift) & 0x3f));
    };
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xc0 | codePoint >> 6);
        trailing(0);
    } else if (codePoint < 0x10000) {
        text += static_cast<char>(0xe0 | codePoint >> 12);
        trailing(6);
        trailing(0);
    } else {
        text += static_cast<char>(0xf0 | codePoint >> 18);
        trailing(12);
        trailing(6);
        trailing(0);
    }
}

}  // namespace

void foldCase(std::string_view text, std::string& folded) {
    // Most names are ASCII from end to end.
    folded.resize(text.size());
    folded.resize(foldAsciiBlocks(text, folded.data()));
    text.remove_prefix(folded.size());
    while (!text.empty()) {
        if (isAscii(text[0])) {
            folded += lowerAscii(text[0]);
            text.remove_prefix(1);
        } else {
            const auto [codePoint, length] = decode(text);
            append(lowerCase(codePoint), folded);
            text.remove_prefix(length);
        }
    }
}

std::string foldCase(std::string_view text) {
    std::string folded;
    foldCase(text, folded);
    return folded;
}

std::size_t foldedLength(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    return byte < 0x80 ? 1 : byte < 0xe0 ? 2 : byte < 0xf0 ? 3 : 4;
}
