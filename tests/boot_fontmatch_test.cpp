// From the description of a font to a file, and what serves for a missing one.
#include "boot_finder.h"

using testing::ElementsAre;

namespace {

class FontMatchTest : public FinderTest {
  protected:
    FontMatchTest() { bootBare(); }

    // The file for the description, "none" when there is none.
    template <class Finder>
    std::string fileFrom(Finder* finder, const OdTtfDescriptor& wanted) {
        OdString fileName = L"as it was";
        if (finder->ttfFileNameByDescriptor(wanted, fileName)) {
            return local(fileName);
        }
        EXPECT_EQ(fileName, L"as it was");
        return "none";
    }
    std::string indexedFile(const OdTtfDescriptor& wanted) {
        return fileFrom(fonts().get(), wanted);
    }
    std::string hostsFile(const OdTtfDescriptor& wanted) {
        return fileFrom(vodbSystemServices(), wanted);
    }
    // Regular, bold, italic, and both.
    std::vector<std::string> inEachStyle(const OdString& typeface) {
        return {
            indexedFile(faceOf(typeface, false, false)), indexedFile(faceOf(typeface, true, false)),
            indexedFile(faceOf(typeface, false, true)), indexedFile(faceOf(typeface, true, true))};
    }
};

TEST_F(FontMatchTest, StyleAndTypefaceFitExactlyOrAStyledRequestFallsToTheFamily) {
    trueType("share/fonts/1.ttf", "Sans", "Bold");
    trueType("share/fonts/2.ttf", "Sans", "Bold Italic");
    trueType("share/fonts/3.ttf", "Sans");
    trueType("share/fonts/4.ttf", "Sans", "Italic");
    trueType("share/fonts/5.ttf", "Serif", "Bold");
    trueType("share/fonts/6.ttf", "Mono");
    scanSystemFolders();
    EXPECT_THAT(inEachStyle(L"Sans"), ElementsAre("share/fonts/3.ttf", "share/fonts/1.ttf",
                                                  "share/fonts/4.ttf", "share/fonts/2.ttf"));
    EXPECT_THAT(inEachStyle(L"Serif"),
                ElementsAre("none", "share/fonts/5.ttf", "share/fonts/5.ttf", "share/fonts/5.ttf"));
    EXPECT_THAT(inEachStyle(L"Mono"), ElementsAre("share/fonts/6.ttf", "share/fonts/6.ttf",
                                                  "share/fonts/6.ttf", "share/fonts/6.ttf"));
    for (const wchar_t* other : {L"sans", L"San", L"Sans ", L"ns", L""}) {
        EXPECT_THAT(inEachStyle(other), ElementsAre("none", "none", "none", "none"));
    }
}

TEST_F(FontMatchTest, FaceOfSeveralNamesAnswersToEachPartInEveryStyle) {
    trueType("share/fonts/1.ttf", "Song & NSong", "Bold");
    trueType("share/fonts/2.ttf", "NSong");
    trueType("share/fonts/3.ttf", "A&B");
    scanSystemFolders();
    for (const wchar_t* part : {L"Song", L"NSong", L"Song & NSong", L"ong & N"}) {
        EXPECT_THAT(inEachStyle(part), ElementsAre("share/fonts/1.ttf", "share/fonts/1.ttf",
                                                   "share/fonts/1.ttf", "share/fonts/1.ttf"));
    }
    for (const wchar_t* other : {L"song", L"Song & NSong 2", L"A"}) {
        EXPECT_THAT(inEachStyle(other), ElementsAre("none", "none", "none", "none"));
    }
    // The host takes no description without a typeface; it would fit this face.
    EXPECT_EQ(indexedFile(faceOf(L"", false, false)), "share/fonts/1.ttf");
    EXPECT_EQ(hostsFile(faceOf(L"", false, false)), "none");
}

TEST_F(FontMatchTest, FacesOfTheActiveDocumentComeFirst) {
    trueType("share/fonts/sans.ttf", "Sans");
    trueType("share/fonts/bold.ttf", "Sans", "Bold");
    scanSystemFolders();
    openDrawing();
    document->carryFaces({faceOf(L"Sans", true, false, L"/doc/bold.ttf"),
                          faceOf(L"Only here", false, false, L"/doc/here.ttf")});
    EXPECT_EQ(indexedFile(faceOf(L"Sans", true, false)), "share/fonts/bold.ttf");
    documents->active = document;
    EXPECT_EQ(indexedFile(faceOf(L"Sans", true, false)), "/doc/bold.ttf");
    EXPECT_EQ(indexedFile(faceOf(L"Sans", false, false)), "share/fonts/sans.ttf");
    EXPECT_EQ(indexedFile(faceOf(L"Only here", false, true)), "/doc/here.ttf");
}

TEST_F(FontMatchTest, HostLooksForTheFileAndThenForItsName) {
    openDrawing();
    documents->active = document;
    trueType("share/fonts/sans.ttf", "Sans");
    trueType("other/moved.ttf", "Moved");
    trueType("share/fonts/sub/Moved.TTF", "Moved");
    scanSystemFolders();
    document->carryFaces({faceOf(L"There", false, false, wide(folder.path("OTHER/moved.ttf"))),
                          faceOf(L"Stale", false, false, L"/gone/moved.ttf"),
                          faceOf(L"Lost", false, false, L"/gone/lost.ttf")});
    EXPECT_EQ(hostsFile(faceOf(L"Sans", true, false)), "share/fonts/sans.ttf");
    EXPECT_EQ(hostsFile(faceOf(L"There", false, false)), "other/moved.ttf");
    EXPECT_EQ(hostsFile(faceOf(L"Stale", false, false)), "share/fonts/sub/Moved.TTF");
    EXPECT_EQ(hostsFile(faceOf(L"Lost", false, false)), "none");
    EXPECT_EQ(hostsFile(faceOf(L"Unknown", false, false)), "none");
    vo_arbitDict_clearservice(vosi::kFindFontsKey);
    EXPECT_EQ(hostsFile(faceOf(L"Sans", true, false)), "none");
}

TEST_F(FontMatchTest, SubstituteOfEachKindStandsInTheTree) {
    const auto substitute = [](int kind) {
        return utf8(
            vodbSystemServices()->getSubstituteFont(L"missing.shx", static_cast<OdFontType>(kind)));
    };
    const char* const keys[] = {"FontTypeUnknown", "FontTypeShx", "FontTypeTrueType",
                                "FontTypeShape",   "FontTypeBig", "FontTypeRsc"};
    const VoJsonPtr node = vo_sys_config("User")->makePath("SubstituteFont");
    for (int kind = 0; kind < 6; ++kind) {
        EXPECT_EQ(substitute(kind), "");
        node->set_propertys(keys[kind], "替" + std::to_string(kind), false);
        EXPECT_EQ(substitute(kind), "替" + std::to_string(kind));
    }
    EXPECT_EQ(substitute(6), "");
    // A kind without a key reads what the root holds under the empty one.
    vo_sys_config("")->set_propertys("", "under no key.shx", false);
    EXPECT_EQ(substitute(6), "under no key.shx");
    node->set_propertys("FontTypeShx", "", false);
    EXPECT_EQ(substitute(kFontTypeShx), "");
    EXPECT_EQ(substitute(kFontTypeBig), "替4");
}

}  // namespace
