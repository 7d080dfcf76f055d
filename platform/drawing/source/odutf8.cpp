// Conversion between wide text and UTF-8.
//
// Both ways write into a string that has its size before. What names and paths are mostly made of,
// ASCII and characters of three bytes, is recognised ahead of the general case.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "drawing/oderror.h"
#include "drawing/odstring.h"

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isCodePoint(char32_t c) {
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
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
        put(0xE0 | (c >> 12));
        continuation(6);
        continuation(0);
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

// The same for any text. Three bytes whose lead sets its follower no bounds of its own are put
// together here.
inline Decoded decode(std::string_view text) {
    const auto byte = [text](std::size_t place) { return static_cast<std::uint8_t>(text[place]); };
    if (byte(0) < 0x80) {
        return {byte(0), 1};
    }
    if (text.size() >= 3 && byte(0) >= 0xE1 && byte(0) <= 0xEC && (byte(1) & 0xC0) == 0x80 &&
        (byte(2) & 0xC0) == 0x80) {
        return {((byte(0) & 0x0Fu) << 12) | ((byte(1) & 0x3Fu) << 6) | (byte(2) & 0x3Fu), 3};
    }
    return decodeSequence(text);
}

// How much of the text's front is ASCII, in whole blocks.
std::size_t asciiBlocks(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::uint64_t block = 0;
    std::size_t length = 0;
    while (text.size() - length >= sizeof block) {
        std::memcpy(&block, text.data() + length, sizeof block);
        if ((block & highBits) != 0) {
            break;
        }
        length += sizeof block;
    }
    return length;
}

std::wstring wideFromUtf8(std::string_view text) {
    // There are never more characters than bytes.
    std::wstring wide(text.size(), L'\0');
    std::size_t at = asciiBlocks(text);
    wchar_t* out = std::copy_n(text.data(), at, wide.data());
    while (at < text.size()) {
        const Decoded next = decode(text.substr(at));
        *out++ = static_cast<wchar_t>(next.c);
        at += next.length;
    }
    wide.resize(static_cast<std::size_t>(out - wide.data()));
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
        return {text.begin(), text.end()};
    }
    constexpr std::size_t longest = 4;
    std::string bytes(text.size() * longest, '\0');
    char* out = bytes.data();
    for (const wchar_t character : text) {
        const auto c = static_cast<char32_t>(character);
        out = putUtf8(out, isCodePoint(c) ? c : replacement);
    }
    bytes.resize(static_cast<std::size_t>(out - bytes.data()));
    return bytes;
}

std::wstring wideFromAscii(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<std::uint8_t>(c);
        wide.push_back(static_cast<wchar_t>(byte < 0x80 ? byte : replacement));
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
