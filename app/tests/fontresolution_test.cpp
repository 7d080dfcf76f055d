// How text styles get their fonts, against a host that holds a few; and how FIND names a place.
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <drawing/runtime.h>

#include "fontresolution.h"
#include "foundplace.h"

namespace vemoapp {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using Names = std::map<OdString, OdString>;

class FontHost : public ExHostAppServices {
  public:
    OdString findFile(const OdString& name, OdDbBaseDatabase*, FindFileHint hint) override {
        ++searches;
        const Names& names = hint == kCompiledShapeFile  ? compiled
                             : hint == kTrueTypeFontFile ? trueType
                                                         : anyFont;
        auto found = names.find(name);
        return found == names.end() ? OdString() : found->second;
    }
    bool ttfFileNameByDescriptor(const OdTtfDescriptor& face, OdString& fileName) override {
        const bool known = face.typeface == L"Sans" && face.flags == OdTtfDescriptor::kBold;
        fileName = known ? OdString(L"/f/sans-bold.ttf") : fileName;
        return known;
    }
    OdString getSubstituteFont(const OdString&, OdFontType type) override {
        return substitutes[type];
    }

    Names compiled;
    Names trueType;
    Names anyFont;
    std::map<OdFontType, OdString> substitutes;
    int searches = 0;
};

DxfTextStyle compiled(const char* name, const char* font, const char* bigFont = "") {
    return {name, font, bigFont, "", 0, false};
}

DxfTextStyle trueType(const char* name, const char* typeface, std::uint32_t flags = 0,
                      const char* file = "") {
    return {name, file, "", typeface, flags, false};
}

DxfTextStyle shapes(const char* file) {
    return {"", file, "", "", 0, true};
}

std::vector<std::string> describe(FontHost& host, const std::vector<DxfTextStyle>& styles,
                                  std::size_t limit = 12) {
    return FontResolution(host, nullptr).describe(styles, limit);
}

TEST(FontResolution, EachSortOfStyleTakesItsRoad) {
    OdStaticRxObject<FontHost> host;
    host.compiled = {{L"txt.shx", L"/f/txt.shx"}, {L"hz.shx", L"/f/hz.shx"}};
    host.trueType = {{L"Serif.TTC", L"/f/serif.ttc"}, {L"old.ttf", L"/f/old.ttf"}};
    const std::vector<DxfTextStyle> styles = {
        compiled("A", "txt", "hz"), trueType("B", "Sans", OdTtfDescriptor::kBold | 34U),
        compiled("C", "Serif.TTC"), trueType("D", "Elsewhere", 0, "C:\\FONTS\\old.ttf"),
        shapes("txt.shx"),          compiled("E", "", "hz.shx"),
        compiled("F", "")};
    EXPECT_THAT(describe(host, styles),
                ElementsAre("A: txt.shx is /f/txt.shx; big font hz.shx is /f/hz.shx",
                            "B: Sans bold is /f/sans-bold.ttf", "C: Serif.TTC is /f/serif.ttc",
                            "D: Elsewhere is /f/old.ttf, found by the file's name",
                            "shapes: shape file txt.shx is /f/txt.shx",
                            "E: big font hz.shx is /f/hz.shx", "F: no font"));
}

TEST(FontResolution, AMissingFontComesFirstWithWhatServesInstead) {
    OdStaticRxObject<FontHost> host;
    host.compiled = {{L"txt.shx", L"/f/txt.shx"}};
    host.anyFont = {{L"txt.shx", L"/f/txt.shx"}, {L"a.ttf", L"/f/a.ttf"}};
    host.substitutes = {
        {kFontTypeShx, L"txt"}, {kFontTypeTrueType, L"a.ttf"}, {kFontTypeBig, L"gone.shx"}};
    const std::vector<DxfTextStyle> styles = {
        compiled("GOOD", "txt"), compiled("A", "b.shx", "c.shx"),
        trueType("B", "Serif", OdTtfDescriptor::kItalic), shapes("s.shx")};
    EXPECT_THAT(
        describe(host, styles),
        ElementsAre("A: b.shx is missing, /f/txt.shx serves instead (configured for SHX fonts); "
                    "big font c.shx is missing, and its substitute gone.shx (configured for big "
                    "fonts) is missing too",
                    "B: Serif italic is missing, /f/a.ttf serves instead (configured for TrueType "
                    "fonts)",
                    "shapes: shape file s.shx is missing, and there is no substitute",
                    "GOOD: txt.shx is /f/txt.shx"));
}

TEST(FontResolution, ThousandsOfStylesCostAsManySearchesAsTheyNameFonts) {
    OdStaticRxObject<FontHost> host;
    host.compiled = {{L"txt.shx", L"/f/txt.shx"}};
    std::vector<DxfTextStyle> styles;
    for (int index = 0; index < 5000; ++index) {
        const std::string name = "S" + std::to_string(index);
        styles.push_back(compiled(name.c_str(), index % 1000 == 999 ? "lost.shx" : "txt.shx"));
    }
    const std::vector<std::string> lines = describe(host, styles, 3);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_THAT(lines[0], HasSubstr("S999: lost.shx is missing"));
    EXPECT_EQ(lines[3], "and 4997 more, 2 of which miss a font");
    EXPECT_EQ(host.searches, 2);
}

TEST(FoundPlace, IsTheFirstOfTheSearchThatFits) {
    const SearchPlaces lists{"/d/", "/w/v", false, "supportPaths", {"/s1", "/s2/", "/d/"}};
    EXPECT_EQ(placeOf("A.LIN", "/d/a.lin", lists), "the drawing's folder");
    EXPECT_EQ(placeOf("sub\\a.lin", "/d/Sub/a.lin", lists), "the drawing's folder");
    EXPECT_EQ(placeOf("../A.lin", "/w/a.lin", lists), "the working folder");
    EXPECT_EQ(placeOf("*.pat", "/s2/first.pat", lists), "entry 2 of supportPaths");
    EXPECT_EQ(placeOf("old/a.lin", "/s1/a.lin", lists), "entry 1 of supportPaths");
    EXPECT_EQ(placeOf("/D/A.lin", "/d/a.lin", lists), "as named");
    EXPECT_EQ(placeOf("c:/x/a.lin", "/d/a.lin", lists), "entry 3 of supportPaths");
    EXPECT_EQ(placeOf("a.lin", "/s1/deep/a.lin", lists), "in no folder that the lists name");
    const SearchPlaces fonts{"", "/w", true, "", {}};
    EXPECT_EQ(placeOf("txt.shx", "/d/txt.shx", fonts), "the font index");
    EXPECT_EQ(placeOf("txt.shx", "/w/txt.shx", fonts), "the working folder");
}

}  // namespace
}  // namespace vemoapp
