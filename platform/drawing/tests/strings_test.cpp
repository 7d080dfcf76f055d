#include <climits>
#include <clocale>
#include <string>

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

TEST(Strings, FoldCase) {
    std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_EQ(OdString(L"OTtÖ图").makeLower(), L"ottö图");
    EXPECT_EQ(Od_stricmpA("Plan.SHX", "pLAN.shx"), 0);
    EXPECT_LT(Od_stricmpA("a", "B"), 0);
    EXPECT_GT(Od_stricmpA("ab", "A"), 0);
    EXPECT_LT(Od_stricmpA("Z", "\xC3\x84"), 0);
    EXPECT_EQ(Od_stricmpA(nullptr, ""), 0);
}
