// Conversion between wide text and UTF-8.
#include <cstdint>

#include "drawing/oderror.h"
#include "drawing/odstring.h"

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isCodePoint(char32_t c) {
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

void appendUtf8(std::string& out, char32_t c) {
    auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
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

// Takes one code point, or one maximal ill-formed part, off the text's front.
char32_t takeCodePoint(std::string_view& text) {
    const auto lead = static_cast<std::uint8_t>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80) {
        return lead;
    }
    Sequence sequence = sequenceOf(lead);
    if (sequence.continuations == 0) {
        return replacement;
    }
    for (; sequence.continuations > 0; --sequence.continuations) {
        const std::uint8_t next = text.empty() ? 0 : static_cast<std::uint8_t>(text.front());
        if (next < sequence.lowest || next > sequence.highest) {
            return replacement;
        }
        text.remove_prefix(1);
        sequence.bits = (sequence.bits << 6) | (next & 0x3Fu);
        sequence.lowest = 0x80;
        sequence.highest = 0xBF;
    }
    return sequence.bits;
}

std::wstring wideFromUtf8(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        wide.push_back(static_cast<wchar_t>(takeCodePoint(text)));
    }
    return wide;
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
    std::string bytes;
    bytes.reserve(text.view().size());
    for (const wchar_t character : text.view()) {
        const auto c = static_cast<char32_t>(character);
        appendUtf8(bytes, isCodePoint(c) ? c : replacement);
    }
    return bytes;
}

OdString OdUtf8StringToOdString(const OdAnsiString& text) {
    return {text, OdCodePageId::kUtf8};
}
