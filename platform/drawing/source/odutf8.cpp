// Conversion between wide text and UTF-8.
//
// Both ways write into a text that has its size before. What names and paths are mostly made of,
// ASCII and characters of three bytes, is recognised ahead of the general case.
#include <algorithm>
#include <cstdint>

#include "drawing/oderror.h"
#include "drawing/odstring.h"

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isCodePoint(char32_t c) {
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

char* putThreeBytes(char* out, char32_t c) {
    out[0] = static_cast<char>(0xE0 | c >> 12);
    out[1] = static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out[2] = static_cast<char>(0x80 | (c & 0x3F));
    return out + 3;
}

// Writes the code point's bytes and gives the place behind them.
char* putUtf8(char* out, char32_t c) {
    auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
    auto continuation = [&](int shift) { put(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        continuation(0);
    } else if (c < 0x10000) {
        return putThreeBytes(out, c);
    } else {
        put(0xF0 | (c >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
    return out;
}

// What a lead byte asks for. Only the byte right after it has bounds of its own; they keep out
// overlong forms, surrogates and what lies beyond the last code point.
struct Sequence {
    int continuations;
    char32_t bits;
    std::uint8_t lowest = 0x80;
    std::uint8_t highest = 0xBF;
};

// No continuations for a byte that can't lead a sequence.
Sequence sequenceOf(std::uint8_t lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return {1, lead & 0x1Fu};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const std::uint8_t lowest = lead == 0xE0 ? 0xA0 : 0x80;
        const std::uint8_t highest = lead == 0xED ? 0x9F : 0xBF;
        return {2, lead & 0x0Fu, lowest, highest};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const std::uint8_t lowest = lead == 0xF0 ? 0x90 : 0x80;
        const std::uint8_t highest = lead == 0xF4 ? 0x8F : 0xBF;
        return {3, lead & 0x07u, lowest, highest};
    }
    return {0, 0};
}

// A code point, and how many bytes it was made of.
struct Decoded {
    char32_t c;
    std::size_t length;
};

// What stands at the text's front and isn't ASCII: one code point, or one maximal ill-formed part.
Decoded decodeSequence(std::string_view text) {
    Sequence sequence = sequenceOf(static_cast<std::uint8_t>(text.front()));
    if (sequence.continuations == 0) {
        return {replacement, 1};
    }
    std::size_t length = 1;
    for (; sequence.continuations > 0; --sequence.continuations) {
        const std::uint8_t next =
            length < text.size() ? static_cast<std::uint8_t>(text[length]) : 0;
        if (next < sequence.lowest || next > sequence.highest) {
            return {replacement, length};
        }
        ++length;
        sequence.bits = (sequence.bits << 6) | (next & 0x3Fu);
        sequence.lowest = 0x80;
        sequence.highest = 0xBF;
    }
    return {sequence.bits, length};
}

// The same for any text.
Decoded decode(std::string_view text) {
    const auto first = static_cast<std::uint8_t>(text.front());
    return first < 0x80 ? Decoded{first, 1} : decodeSequence(text);
}

// Converts the text's front as far as it is characters of three bytes each, those left out whose
// lead sets its follower bounds of its own, and gives its length in bytes.
std::size_t takeThreeByteCharacters(std::string_view text, wchar_t*& out) {
    std::size_t length = 0;
    for (; text.size() - length >= 3; length += 3) {
        const auto byte = [at = text.data() + length](std::size_t place) {
            return std::uint32_t{static_cast<std::uint8_t>(at[place])};
        };
        const bool isPlainLead = byte(0) - 0xE1 <= 0xEC - 0xE1;
        if (!isPlainLead || ((byte(1) ^ 0x80) | (byte(2) ^ 0x80)) >= 0x40) {
            break;
        }
        *out++ =
            static_cast<wchar_t>((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
    }
    return length;
}

// Converts the text's front as far as it is ASCII in whole blocks, and gives its length.
std::size_t takeAsciiBlocks(std::string_view text, wchar_t* out) {
    constexpr std::size_t blockSize = 16;
    std::size_t length = 0;
    for (; text.size() - length >= blockSize; length += blockSize) {
        unsigned int bits = 0;
        for (std::size_t place = length; place < length + blockSize; ++place) {
            bits |= static_cast<unsigned char>(text[place]);
            out[place] = static_cast<wchar_t>(text[place]);
        }
        if (bits >= 0x80) {
            break;
        }
    }
    return length;
}

OdSharedText wideFromUtf8(std::string_view text) {
    OdSharedText wide;
    if (text.empty()) {
        return wide;
    }
    // There are never more characters than bytes.
    wchar_t* out = wide.overwrite(text.size());
    std::size_t at = takeAsciiBlocks(text, out);
    out += at;
    while (at += takeThreeByteCharacters(text.substr(at), out), at < text.size()) {
        const Decoded next = decode(text.substr(at));
        *out++ = static_cast<wchar_t>(next.c);
        at += next.length;
    }
    wide.erase(static_cast<std::size_t>(out - wide.c_str()));
    return wide;
}

bool isAscii(std::wstring_view text) {
    std::uint32_t bits = 0;
    for (const wchar_t character : text) {
        bits |= static_cast<std::uint32_t>(character);
    }
    return bits < 0x80;
}

std::string utf8FromWide(std::wstring_view text) {
    if (isAscii(text)) {
        std::string ascii(text.size(), '\0');
        std::transform(text.begin(), text.end(), ascii.begin(),
                       [](wchar_t character) { return static_cast<char>(character); });
        return ascii;
    }
    constexpr std::size_t longest = 4;
    std::string bytes(text.size() * longest, '\0');
    char* out = bytes.data();
    for (const wchar_t character : text) {
        const auto c = static_cast<char32_t>(character);
        const bool isPlain = c - 0x800 < 0xD800 - 0x800;
        out = isPlain ? putThreeBytes(out, c) : putUtf8(out, isCodePoint(c) ? c : replacement);
    }
    bytes.resize(static_cast<std::size_t>(out - bytes.data()));
    return bytes;
}

OdSharedText wideFromAscii(std::string_view text) {
    OdSharedText wide;
    wchar_t* out = wide.overwrite(text.size());
    for (const char c : text) {
        const auto byte = static_cast<std::uint8_t>(c);
        *out++ = static_cast<wchar_t>(byte < 0x80 ? byte : replacement);
    }
    return wide;
}

}  // namespace

OdString::OdString(const OdAnsiString& bytes, OdCodePageId codePage) {
    switch (codePage) {
        case OdCodePageId::kUtf8:
            text = wideFromUtf8(bytes.view());
            break;
        case OdCodePageId::kAscii:
            text = wideFromAscii(bytes.view());
            break;
        default:
            throw OdError(eNotImplementedYet, L"this code page");
    }
}

OdAnsiString OdStringToUtf8String(const OdString& text) {
    return utf8FromWide(text.view());
}

OdString OdUtf8StringToOdString(const OdAnsiString& text) {
    return {text, OdCodePageId::kUtf8};
}
