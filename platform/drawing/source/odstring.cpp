// What the strings do beyond holding text: formatting, lower case, comparison.
#include "drawing/odstring.h"

#include <cwchar>
#include <cwctype>
#include <vector>

#include "drawing/oderror.h"

namespace {

// The C library tells a format that can't be carried out from a buffer that is too short by
// nothing. A text that doesn't fit here counts as the former.
constexpr std::size_t longestFormattedText = std::size_t{1} << 20;

// "%s" without a length means wide text here and narrow text to the C library.
std::wstring withWideTexts(std::wstring_view format) {
    constexpr std::wstring_view flagsWidthPrecision = L"-+ #'0123456789$*.";
    std::wstring rewritten;
    rewritten.reserve(format.size() + 8);
    for (std::size_t i = 0; i < format.size(); ++i) {
        rewritten.push_back(format[i]);
        if (format[i] != L'%') {
            continue;
        }
        while (i + 1 < format.size() && flagsWidthPrecision.find(format[i + 1]) != format.npos) {
            rewritten.push_back(format[++i]);
        }
        if (i + 1 < format.size()) {
            ++i;
            rewritten += format[i] == L's' ? L"ls" : std::wstring(1, format[i]);
        }
    }
    return rewritten;
}

unsigned char lowerAscii(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte - 'A' + 'a') : byte;
}

}  // namespace

OdString& OdString::makeLower() {
    const OdSharedText before = text;
    wchar_t* out = text.overwrite(before.size());
    for (const wchar_t character : std::wstring_view(before.c_str(), before.size())) {
        *out++ = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
    }
    return *this;
}

OdString& OdString::format(const OdChar* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    try {
        formatV(format, arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
    return *this;
}

OdString& OdString::formatV(const OdChar* format, va_list arguments) {
    if (!format) {
        throw OdError(eInvalidInput, L"no format");
    }
    const std::wstring wideFormat = withWideTexts(format);
    for (std::size_t room = 256; room <= longestFormattedText; room *= 4) {
        std::vector<wchar_t> buffer(room);
        va_list copy;
        va_copy(copy, arguments);
        // The analyzer doesn't follow va_copy from a parameter.
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
        const int length = std::vswprintf(buffer.data(), room, wideFormat.c_str(), copy);
        va_end(copy);
        if (length >= 0) {
            text = OdSharedText({buffer.data(), static_cast<std::size_t>(length)});
            return *this;
        }
    }
    throw OdError(eInvalidInput, OdString(L"format that can't be carried out: ") + format);
}

int Od_stricmpA(const char* a, const char* b) {
    a = a ? a : "";
    b = b ? b : "";
    for (; *a && lowerAscii(*a) == lowerAscii(*b); ++a, ++b) {
    }
    return lowerAscii(*a) - lowerAscii(*b);
}
