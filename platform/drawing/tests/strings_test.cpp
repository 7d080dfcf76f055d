#include <algorithm>
#include <array>
#include <climits>
#include <clocale>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "testsupport.h"

namespace {

OdString fromUtf8(const char* bytes) {
    return OdUtf8StringToOdString(bytes);
}

OdString vformatted(const OdChar* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    OdString first;
    OdString second;
    first.formatV(format, arguments);
    second.formatV(format, arguments);
    va_end(arguments);
    EXPECT_EQ(first, second) << "the caller's list was consumed";
    return second;
}

}  // namespace

TEST(Utf8, RoundTripsTheEdgesOfEachLength) {
    for (const char32_t c : {U'\1', U'\x7F', U'\x80', U'\x7FF', U'\x800', U'\xD7FF', U'\xE000',
                             U'\xFFFD', U'\xFFFF', U'\x10000', U'\x10FFFF'}) {
        const OdString text(std::wstring(1, static_cast<wchar_t>(c)).c_str());
        EXPECT_EQ(OdUtf8StringToOdString(OdStringToUtf8String(text)), text) << std::hex << +c;
    }
    EXPECT_EQ(OdStringToUtf8String(L"aé图😀"), "a\xC3\xA9\xE5\x9B\xBE\xF0\x9F\x98\x80");
}

TEST(Utf8, KeepsANulInside) {
    const OdAnsiString bytes(std::string("a\0b", 3));
    EXPECT_EQ(OdUtf8StringToOdString(bytes).getLength(), 3);
    EXPECT_EQ(OdStringToUtf8String(OdUtf8StringToOdString(bytes)), bytes);
}

// The definition of the two conversions, one step after the other.
namespace plain {

std::string utf8Of(char32_t c) {
    const auto byte = [c](char32_t lead, int shift, char32_t mask) {
        return static_cast<char>(lead | ((c >> shift) & mask));
    };
    if (c < 0x80) {
        return {byte(0, 0, 0x7F)};
    }
    if (c < 0x800) {
        return {byte(0xC0, 6, 0x1F), byte(0x80, 0, 0x3F)};
    }
    if (c < 0x10000) {
        return {byte(0xE0, 12, 0x0F), byte(0x80, 6, 0x3F), byte(0x80, 0, 0x3F)};
    }
    return {byte(0xF0, 18, 0x07), byte(0x80, 12, 0x3F), byte(0x80, 6, 0x3F), byte(0x80, 0, 0x3F)};
}

bool isCodePoint(char32_t c) {
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

/// The code point that the bytes are the form of; nothing for any others.
std::optional<char32_t> codePointOf(const std::string& bytes) {
    const char32_t leadMasks[] = {0x7F, 0x1F, 0x0F, 0x07};
    char32_t c = static_cast<unsigned char>(bytes[0]) & leadMasks[bytes.size() - 1];
    for (const char byte : bytes.substr(1)) {
        c = (c << 6) | (static_cast<unsigned char>(byte) & 0x3F);
    }
    return isCodePoint(c) && utf8Of(c) == bytes ? std::optional(c) : std::nullopt;
}

/// Whether bytes behind these can make them a code point's form, or they are one.
bool isBeginning(const std::string& bytes) {
    for (std::size_t length = bytes.size(); length <= 4; ++length) {
        for (const char fill : {'\x80', '\xBF'}) {
            if (codePointOf(bytes + std::string(length - bytes.size(), fill))) {
                return true;
            }
        }
    }
    return false;
}

std::wstring wideOf(const std::string& text) {
    std::wstring wide;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 1;
        while (at + length < text.size() && isBeginning(text.substr(at, length + 1))) {
            ++length;
        }
        wide += static_cast<wchar_t>(codePointOf(text.substr(at, length)).value_or(U'\xFFFD'));
        at += length;
    }
    return wide;
}

}  // namespace plain

TEST(Utf8, RandomTextsAreConvertedAsTheDefinitionSays) {
    constexpr unsigned seed = 21;
    std::mt19937 random(seed);
    const char32_t limits[] = {0x80, 0x800, 0x10000, 0x110000, 0x120000};
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes;
        std::wstring wide;
        std::string wideAsBytes;
        const auto limit = limits[random() % std::size(limits)];
        for (auto count = random() % 30; count > 0; --count) {
            const char32_t c = static_cast<char32_t>(random()) % limit;
            wide += static_cast<wchar_t>(c);
            wideAsBytes += plain::utf8Of(plain::isCodePoint(c) ? c : U'\xFFFD');
            // In the bytes stands the form of any number, one in eight damaged.
            const std::string form = plain::utf8Of(c);
            bytes +=
                random() % 8 ? form : form.substr(0, random() % 3) + static_cast<char>(random());
        }
        ASSERT_EQ(OdUtf8StringToOdString(OdAnsiString(bytes)).view(), plain::wideOf(bytes)) << seed;
        ASSERT_EQ(OdStringToUtf8String(OdString(std::wstring_view(wide))).view(), wideAsBytes)
            << seed;
    }
}

// One replacement for each maximal ill-formed part; the rows follow Unicode's own tables.
TEST(Utf8, ReplacesEachMaximalIllFormedPartOnce) {
    EXPECT_EQ(fromUtf8("\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"),
              L"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD"
              L"\xFFFD\xFFFD\xFFFD"
              L"A");
    EXPECT_EQ(fromUtf8("\xED\xA0\x80\x41"), L"\xFFFD\xFFFD\xFFFD\x41");
    EXPECT_EQ(fromUtf8("\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"),
              L"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD\x41\xFFFD\xFFFD\x42");
    EXPECT_EQ(fromUtf8("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), L"\xFFFD\xFFFD\xFFFD\xFFFD\x41");
    EXPECT_EQ(fromUtf8("a\xF0\x9F\x98"), L"a\xFFFD");
}

TEST(Utf8, ReplacesWideTextOutsideUnicode) {
    const wchar_t text[] = {L'a', 0xD800, 0xDFFF, 0x110000, static_cast<wchar_t>(-1), L'b', 0};
    EXPECT_EQ(OdStringToUtf8String(text),
              "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
              "b");
}

TEST(CodePages, KnowUtf8AndAsciiAlone) {
    EXPECT_EQ(OdString(OdAnsiString("é"), OdCodePageId::kUtf8), L"é");
    EXPECT_EQ(OdString(OdAnsiString("a\xE9"), OdCodePageId::kAscii), L"a\xFFFD");
    EXPECT_EQ(raisedBy([] { OdString(OdAnsiString("a"), OdCodePageId::kAnsi936); }),
              eNotImplementedYet);
}

TEST(Format, TakesWideTextForS) {
    EXPECT_EQ(vformatted(L"%s|%-4s|%5.2s|%ls|%hs", L"图", L"ab", L"xyz", L"w", "narrow"),
              L"图|ab  |   xy|w|narrow");
    EXPECT_EQ(vformatted(L"%2$s %1$s", L"a", L"b"), L"b a");
    EXPECT_EQ(vformatted(L"%*s 100%% %%s", 3, L"a"), L"  a 100% %s");
    EXPECT_EQ(vformatted(L"%d %08X %lf %g %lld %c", -1, 255u, 1.5, 0.25, LLONG_MIN, 'c'),
              L"-1 000000FF 1.500000 0.25 -9223372036854775808 c");
}

TEST(Format, GrowsAndMayUseItsOwnText) {
    OdString text(std::wstring(100000, L'x').c_str());
    text.format(L"%s.", text.c_str());
    EXPECT_EQ(text.getLength(), 100001);
    OdString own(L"%d");
    EXPECT_EQ(own.format(own.c_str(), 3), L"3");
}

TEST(Format, RaisesWhatCannotBeCarriedOutAndKeepsTheText) {
    OdString text(L"kept");
    EXPECT_EQ(raisedBy([&] { text.format(L"%hs", "\xFF\xFE"); }), eInvalidInput);
    EXPECT_EQ(raisedBy([&] { text.format(L"%1500000d", 1); }), eInvalidInput);
    EXPECT_EQ(raisedBy([&] { text.format(nullptr); }), eInvalidInput);
    EXPECT_EQ(text, L"kept");
}

TEST(Strings, AnswerAtTheirEdges) {
    const OdString text(L"path/to/file");
    EXPECT_EQ(text.mid(text.reverseFind(L'/') + 1), L"file");
    EXPECT_EQ(text.mid(100), L"");
    EXPECT_EQ(text.left(-1), L"");
    EXPECT_EQ(text.right(100), text);
    EXPECT_EQ(text.find(L"to", 6), -1);
    EXPECT_EQ(text.findOneOf(L"\\/"), 4);
    EXPECT_EQ(OdString(static_cast<const OdChar*>(nullptr)), L"");
    EXPECT_EQ(raisedBy([&] { (void)text.getAt(12); }), eInvalidIndex);
    EXPECT_EQ(raisedBy([&] { (void)text.getAt(-1); }), eInvalidIndex);
}

// Strings that copy each other and change beside plain texts that do the same.
TEST(Strings, ChangeForThemselvesAlone) {
    constexpr unsigned seed = 7;
    std::mt19937 random(seed);
    std::array<OdString, 4> strings;
    std::array<std::wstring, 4> texts;
    for (int step = 0; step < 20000; ++step) {
        const std::size_t one = random() % strings.size();
        const std::size_t other = random() % strings.size();
        const std::size_t start = random() % 8;
        const wchar_t letter = L"ABCDEFGH"[start];
        switch (random() % 7) {
            case 0:
                strings[one] = strings[other];
                texts[one] = texts[other];
                break;
            case 1:
                strings[one] += strings[other].view();
                texts[one] += std::wstring(texts[other]);
                break;
            case 2:
                strings[one] += letter;
                texts[one] += letter;
                break;
            case 3:
                strings[one].trimRight(L'A');
                texts[one].erase(texts[one].find_last_not_of(L'A') + 1);
                break;
            case 4:
                strings[one].makeLower();
                std::transform(texts[one].begin(), texts[one].end(), texts[one].begin(),
                               [](wchar_t c) { return c < L'a' ? c - L'A' + L'a' : c; });
                break;
            case 5:
                strings[one] = strings[other].mid(static_cast<int>(start), 3);
                texts[one] =
                    std::wstring(texts[other]).substr(std::min(texts[other].size(), start), 3);
                break;
            default:
                if (strings[one].getLength() > 100) {
                    strings[one].empty();
                    texts[one].clear();
                }
        }
        for (std::size_t index = 0; index < strings.size(); ++index) {
            ASSERT_EQ(strings[index].view(), texts[index]) << step;
            ASSERT_EQ(strings[index].c_str()[texts[index].size()], L'\0') << step;
        }
    }
}

TEST(Strings, FoldCase) {
    std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_EQ(OdString(L"OTtÖ图").makeLower(), L"ottö图");
    EXPECT_EQ(Od_stricmpA("Plan.SHX", "pLAN.shx"), 0);
    EXPECT_LT(Od_stricmpA("a", "B"), 0);
    EXPECT_GT(Od_stricmpA("ab", "A"), 0);
    EXPECT_LT(Od_stricmpA("Z", "\xC3\x84"), 0);
    EXPECT_EQ(Od_stricmpA(nullptr, ""), 0);
}
