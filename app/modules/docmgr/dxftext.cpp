#include "dxftext.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <utility>

#include <iconv.h>

#include <drawing/runtime.h>

#include "text.h"

namespace vemoapp {

namespace {

constexpr std::string_view kFirstUtf8Version = "AC1021";
constexpr std::string_view kEscape = "\\U+";
constexpr std::size_t kEscapeDigits = 4;

bool isAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// "ANSI_936" and "DOS850" are CP936 and CP850 to the converter; "GB2312", "BIG5" and their like
// have the same names there.
std::string converterName(const std::string& codePage) {
    std::string name = upperCase(codePage);
    for (std::string_view prefix : {"ANSI_", "DOS"}) {
        if (name.starts_with(prefix)) {
            return "CP" + name.substr(prefix.size());
        }
    }
    // What else the converter understands in a name isn't for a drawing to ask for.
    bool plain =
        name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_") == std::string::npos;
    return plain ? name : std::string();
}

std::string withoutEscapes(const std::string& text) {
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(kEscape); at != std::string::npos;
         at = text.find(kEscape, at + 1)) {
        const char* digits = text.data() + at + kEscape.size();
        std::size_t available = text.size() - at - kEscape.size();
        std::uint32_t codePoint = 0;
        if (available < kEscapeDigits ||
            std::from_chars(digits, digits + kEscapeDigits, codePoint, 16).ptr !=
                digits + kEscapeDigits) {
            continue;
        }
        result.append(text, from, at - from);
        appendUtf8(result, codePoint);
        from = at + kEscape.size() + kEscapeDigits;
    }
    return result.append(text, from);
}

}  // namespace

DxfTextDecoder::~DxfTextDecoder() {
    closeConverter();
}

void DxfTextDecoder::setEncoding(const std::string& codePage, const std::string& version) {
    closeConverter();
    encoding = version >= kFirstUtf8Version ? std::string() : converterName(codePage);
}

void DxfTextDecoder::openConverter() {
    // Asked for once, whether it is there or not.
    const std::string name = std::exchange(encoding, {});
    iconv_t opened = iconv_open("UTF-8", name.c_str());
    // The C library's own word for failure.
    if (reinterpret_cast<std::intptr_t>(opened) != -1) {
        converter = opened;
    }
}

void DxfTextDecoder::closeConverter() {
    if (converter) {
        iconv_close(converter);
        converter = nullptr;
    }
}

std::string DxfTextDecoder::decode(const std::string& bytes) {
    if (isAscii(bytes)) {
        return withoutEscapes(bytes);
    }
    if (!encoding.empty()) {
        openConverter();
    }
    if (!converter) {
        return withoutEscapes(OdStringToUtf8String(OdUtf8StringToOdString(bytes)).str());
    }
    return withoutEscapes(converted(bytes));
}

std::string DxfTextDecoder::converted(const std::string& bytes) const {
    std::string source = bytes;
    std::string result;
    char* input = source.data();
    std::size_t left = source.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    while (left > 0) {
        char buffer[256];
        char* output = buffer;
        std::size_t room = sizeof buffer;
        std::size_t outcome = iconv(converter, &input, &left, &output, &room);
        int failure = errno;
        result.append(buffer, output);
        if (outcome == static_cast<std::size_t>(-1) && failure != E2BIG) {
            appendUtf8(result, 0xFFFD);
            ++input;
            --left;
        }
    }
    return result;
}

}  // namespace vemoapp
