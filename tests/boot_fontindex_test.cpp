// The index of fonts: what scans put into it, and how a name finds its file in it.
#include <locale.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>

#include "boot_finder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class FontIndexTest : public FinderTest {
  protected:
    FontIndexTest() {
        bootBare();
        openDrawing();
    }

    std::string find(const std::string& name, int hint, OdDbBaseDatabase* asking = nullptr) {
        return local(fonts()->findFile(wide(name), asking, hint));
    }
    std::string findInDocument(const std::string& name, int hint, OdRxObject* asking) {
        return local(fonts()->findFileInDocument(wide(name), asking, hint));
    }
    // The answers for the hints 1, 2 and 3.
    std::vector<std::string> findAsEachKind(const std::string& name,
                                            OdDbBaseDatabase* asking = nullptr) {
        return {find(name, 1, asking), find(name, 2, asking), find(name, 3, asking)};
    }
};

// ---- scans ----

TEST_F(FontIndexTest, ScanGoesThroughTheFoldersInOrderAndTheListsOnlyGrow) {
    for (const char* name : {"share/fonts/b.shx", "share/fonts/A.SHX", "share/fonts/0.shp",
                             "share/fonts/sub/c.Shx", "extra/z.shx", "bin/app.shx"}) {
        unifont(name);
    }
    bigfont("share/fonts/big.shp");
    bigfont("share/fonts/sub/big.shx");
    trueType("share/fonts/one.ttf", "One");
    folder.file("share/fonts/sub/two.TTC", fontfile::collection({named("Two"), named("Three")}));
    trueType("bin/four.ttf", "Four");
    folder.file("bin/five.ttc", fontfile::collection({named("Five")}));
    for (const char* text : {"shapes 1.1", "shapes 1.0", "font"}) {
        folder.file("share/fonts/" + std::string(text) + ".shx",
                    fontfile::shx("Drafting86 " + std::string(text) + " for this test"));
    }
    folder.file("share/fonts/readme.txt", "no font");
    setPaths("fontPaths", {folder.path("missing"), folder.path("extra")});

    const auto addedBy = [this](int flags) {
        const std::size_t before = indexed("shx").size();
        fonts()->scanFonts(flags);
        auto after = indexed("shx");
        after.erase(after.begin(),
                    after.begin() + static_cast<int>(std::min(before, after.size())));
        return after;
    };
    EXPECT_THAT(addedBy(0), IsEmpty());
    EXPECT_THAT(addedBy(vosi::kScanConfiguredFolders), ElementsAre("extra/z.shx", "bin/app.shx"));
    EXPECT_THAT(typefaces(), ElementsAre("Five", "Four"));
    EXPECT_THAT(addedBy(vosi::kScanSystemFolders),
                ElementsAre("share/fonts/A.SHX", "share/fonts/b.shx", "share/fonts/sub/c.Shx",
                            "share/fonts/0.shp"));
    EXPECT_THAT(addedBy(vosi::kScanSystemFolders | vosi::kScanConfiguredFolders),
                ElementsAre("share/fonts/A.SHX", "share/fonts/b.shx", "share/fonts/sub/c.Shx",
                            "share/fonts/0.shp", "extra/z.shx", "bin/app.shx"));
    EXPECT_THAT(indexed("bigfont"), ElementsAre("share/fonts/sub/big.shx", "share/fonts/big.shp",
                                                "share/fonts/sub/big.shx", "share/fonts/big.shp"));
    EXPECT_THAT(typefaces(), ElementsAre("Five", "Four", "Two", "Three", "One"));
}

TEST_F(FontIndexTest, ScanReachesFourLevelsDownAndTheApplicationsFolderAlone) {
    for (const std::string top : {"share/fonts", "extra"}) {
        unifont(top + "/1/2/3/4/in.shx");
        unifont(top + "/1/2/3/4/5/out.shx");
    }
    unifont("bin/app.shx");
    unifont("bin/sub/out.shx");
    setPaths("fontPaths", {folder.path("extra")});
    fonts()->scanFonts(3);
    EXPECT_THAT(indexed("shx"),
                ElementsAre("share/fonts/1/2/3/4/in.shx", "extra/1/2/3/4/in.shx", "bin/app.shx"));
}

TEST_F(FontIndexTest, FolderIsLeftOutOnlyWhenItStandsEarlierLetterForLetter) {
    unifont("extra/x.shx");
    unifont("bin/sub/app.shx");
    folder.link("EXTRA", "extra");
    const std::string extra = folder.path("extra");
    setPaths("fontPaths",
             {extra, folder.path("EXTRA"), extra + '/', extra, extra + '/', folder.path("bin")});
    fonts()->scanFonts(vosi::kScanConfiguredFolders);
    // The application's folder keeps the depth that it has in the list.
    EXPECT_THAT(indexed("shx"),
                ElementsAre("extra/x.shx", "EXTRA/x.shx", "extra/x.shx", "bin/sub/app.shx"));
}

TEST_F(FontIndexTest, BrokenTrueTypeFileLeavesNoTrace) {
    const std::string whole = fontfile::sfnt(named("Broken"));
    folder.file("share/fonts/a.ttf");
    folder.file("share/fonts/b.ttf", "no font, but long enough to be taken for one");
    folder.file("share/fonts/c.ttf", whole.substr(0, whole.size() - 1));
    folder.file("share/fonts/d.ttc", "ttcf");
    folder.file("share/fonts/e.ttc", fontfile::collection({named("Broken")}, 0x00030000));
    trueType("share/fonts/z.ttf", "Good");
    fontfile::Face bad = named("Bad");
    bad.nameTag = "eman";
    folder.file("share/fonts/some.ttc",
                fontfile::collection({named("First"), bad, named("Third")}));
    scanSystemFolders();
    EXPECT_THAT(typefaces(), ElementsAre("First", "Third", "Good"));
    EXPECT_EQ(find("z.ttf", 3), "share/fonts/z.ttf");
    EXPECT_EQ(find("some.ttc", 3), "share/fonts/some.ttc");
    for (const char* name : {"a.ttf", "b.ttf", "c.ttf", "d.ttc", "e.ttc"}) {
        EXPECT_EQ(find(name, 3), "") << name;
    }
}

TEST_F(FontIndexTest, ShortShxFileEndsTheScanWithItsNameAndWhatWasFoundStays) {
    unifont("share/fonts/a.shx");
    bigfont("share/fonts/b.shx");
    const std::string cut = folder.file("share/fonts/m.shx", "Drafting86 unifont 1.");
    unifont("share/fonts/z.shx");
    trueType("share/fonts/t.ttf", "Behind");
    try {
        scanSystemFolders();
        ADD_FAILURE() << "the scan went on";
    } catch (const OdError& error) {
        EXPECT_EQ(error.code(), eEndOfFile);
        EXPECT_THAT(utf8(error.description()), HasSubstr(cut));
    }
    EXPECT_THAT(indexed("shx"), ElementsAre("share/fonts/a.shx"));
    EXPECT_THAT(indexed("bigfont"), ElementsAre("share/fonts/b.shx"));
    EXPECT_THAT(typefaces(), IsEmpty());

    std::filesystem::remove(cut);
    scanSystemFolders();
    EXPECT_EQ(find("z.shx", 2), "share/fonts/z.shx");
    EXPECT_THAT(typefaces(), ElementsAre("Behind"));
}

TEST_F(FontIndexTest, FileThatMayNotBeReadIsPassedOver) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "the superuser may read everything";
    }
    for (const std::string& path :
         {unifont("share/fonts/a.shx"), trueType("share/fonts/a.ttf", "A")}) {
        std::filesystem::permissions(path, std::filesystem::perms::none);
    }
    unifont("share/fonts/b.shx");
    trueType("share/fonts/b.ttf", "B");
    scanSystemFolders();
    EXPECT_THAT(indexed("shx"), ElementsAre("share/fonts/b.shx"));
    EXPECT_THAT(typefaces(), ElementsAre("B"));
}

// ---- names ----

TEST_F(FontIndexTest, HintSaysWhichListsAreRead) {
    unifont("share/fonts/main.shx");
    bigfont("share/fonts/big.shx");
    trueType("share/fonts/sans.ttf", "Sans");
    scanSystemFolders();
    EXPECT_THAT(findAsEachKind("MAIN.shx"),
                ElementsAre("share/fonts/main.shx", "share/fonts/main.shx", ""));
    EXPECT_THAT(findAsEachKind("big.SHX"),
                ElementsAre("share/fonts/big.shx", "share/fonts/big.shx", ""));
    EXPECT_THAT(findAsEachKind("Sans.ttf"),
                ElementsAre("share/fonts/sans.ttf", "", "share/fonts/sans.ttf"));
    EXPECT_EQ(find("main.shx", 0), "");
    EXPECT_EQ(find("main.shx", 4), "");
    for (const char* name :
         {"main", "sub/main.shx", "./main.shx", "fonts\\main.shx", "/nowhere/main.shx", "m*.shx"}) {
        EXPECT_EQ(find(name, 2), "") << name;
        EXPECT_EQ(findInDocument(name, 2, document.get()), "") << name;
    }
}

TEST_F(FontIndexTest, FirstOfSeveralInTheOrderOfTheScanIsTaken) {
    // Main fonts come before big ones, whatever the order of their folders.
    bigfont("share/fonts/1/both.shx");
    unifont("share/fonts/2/both.shx");
    trueType("share/fonts/1/Twice.ttf", "Twice");
    trueType("share/fonts/2/twice.ttf", "Twice");
    scanSystemFolders();
    EXPECT_EQ(find("both.shx", 1), "share/fonts/2/both.shx");
    EXPECT_EQ(find("twice.ttf", 3), "share/fonts/1/Twice.ttf");
}

TEST_F(FontIndexTest, DrawingsFolderAndTheNameAsItStandsComeBeforeTheIndex) {
    for (const char* name : {"share/fonts/a.shx", "drawings/a.shx", "work/A.shx", "companion/c.shx",
                             "support/c.shx", "support/s.shx", "drawings/c.shx"}) {
        unifont(name);
    }
    setPaths("supportPaths", {folder.path("support")});
    scanSystemFolders();
    EXPECT_EQ(find("a.shx", 2, database.get()), "drawings/a.shx");
    std::filesystem::remove(folder.path("drawings/a.shx"));
    EXPECT_EQ(find("a.shx", 2, database.get()), "work/A.shx");
    EXPECT_EQ(findInDocument("a.shx", 2, document.get()), "work/A.shx");
    std::filesystem::remove(folder.path("work/A.shx"));
    EXPECT_EQ(find("a.shx", 2, database.get()), "share/fonts/a.shx");
    // No font comes from the folders that other files are looked for in.
    EXPECT_THAT(findAsEachKind("c.shx"), ElementsAre("", "", ""));
    EXPECT_EQ(findInDocument("s.shx", 2, document.get()), "");
    EXPECT_THAT(findAsEachKind("c.shx", database.get()),
                ElementsAre("drawings/c.shx", "drawings/c.shx", "drawings/c.shx"));
    EXPECT_EQ(find("/nowhere/c.shx", 2, database.get()), "");
}

TEST_F(FontIndexTest, LocaleOfTheMomentDecidesOnCase) {
    trueType("share/fonts/StraßeÄ.ttf", "Strasse");
    scanSystemFolders();
    const auto fits = [this](const char* name) {
        return find(name, 3) == "share/fonts/StraßeÄ.ttf";
    };
    const locale_t ofThread = newlocale(LC_CTYPE_MASK, "C", nullptr);
    ASSERT_TRUE(ofThread && std::setlocale(LC_CTYPE, "C"));
    EXPECT_TRUE(fits("STRAßEÄ.TTF"));
    EXPECT_FALSE(fits("straßeä.ttf"));
    ASSERT_TRUE(std::setlocale(LC_CTYPE, "C.utf8"));
    EXPECT_TRUE(fits("straßeä.ttf"));
    uselocale(ofThread);
    EXPECT_FALSE(fits("straßeä.ttf"));
    uselocale(LC_GLOBAL_LOCALE);
    EXPECT_TRUE(fits("STRAßEä.ttf"));
    std::setlocale(LC_CTYPE, "C");
    EXPECT_FALSE(fits("straßeä.ttf"));
    freelocale(ofThread);
}

// ---- lists of a document ----

TEST_F(FontIndexTest, DocumentsOwnListsComeFirst) {
    unifont("share/fonts/a.shx");
    unifont("share/fonts/own.shx");
    scanSystemFolders();
    document->carry(L"FontTTFFiles", {L"/ttf/x.y", L"/ttf/a.shx"});
    document->carry(L"FontMainShx", {L"/main/x.y"});
    document->carry(L"FontBigShx", {L"C:\\big\\A.shx", L"/big/x.y", L"z.shx"});
    EXPECT_THAT(findAsEachKind("x.y", database.get()),
                ElementsAre("/ttf/x.y", "/main/x.y", "/ttf/x.y"));
    EXPECT_THAT(findAsEachKind("a.shx", database.get()),
                ElementsAre("/ttf/a.shx", "C:\\big\\A.shx", "/ttf/a.shx"));
    EXPECT_EQ(find("own.shx", 2, database.get()), "share/fonts/own.shx");

    document->data->entries->remove(L"FontTTFFiles");
    EXPECT_THAT(findAsEachKind("x.y", database.get()), ElementsAre("/main/x.y", "/main/x.y", ""));
    document->data->entries->remove(L"FontMainShx");
    EXPECT_EQ(findInDocument("X.Y", 1, document.get()), "/big/x.y");
    EXPECT_EQ(findInDocument("Z.shx", 2, document.get()), "z.shx");

    // Only the document that is asked about counts, active or not.
    const OdDbDatabasePtr other = vodbSystemServices()->createDatabase(true, 0);
    documents->active = document;
    EXPECT_EQ(find("a.shx", 2), "share/fonts/a.shx");
    EXPECT_EQ(find("a.shx", 2, other.get()), "share/fonts/a.shx");
    document->data.release();
    EXPECT_EQ(find("a.shx", 2, database.get()), "share/fonts/a.shx");
}

TEST_F(FontIndexTest, ScanOfADocumentGivesItEmptyLists) {
    const OdRxDictionaryPtr entries = document->data->entries;
    unifont("drawings/own.shx");
    fonts()->scanDocumentFonts(nullptr);
    document->stateBits = 5;
    fonts()->scanDocumentFonts(document.get());
    document->stateBits = 4;
    document->path = OdString();
    fonts()->scanDocumentFonts(document.get());
    EXPECT_EQ(entries->numEntries(), 0u);

    document->path = wide(folder.path("drawings/plan.dwg"));
    document->carry(L"FontMainShx", {L"/main/a.shx"});
    unifont("share/fonts/a.shx");
    scanSystemFolders();
    fonts()->scanDocumentFonts(document.get());
    EXPECT_EQ(entries->numEntries(), 3u);
    for (const OdChar* key : {L"FontMainShx", L"FontBigShx"}) {
        const vosi::VosiMapShxFontPtr list = entries->getAt(key);
        ASSERT_FALSE(list.isNull());
        EXPECT_TRUE(list->isEmpty());
    }
    const vosi::VosiMapTrueTypeFontPtr faces = entries->getAt(L"FontTTF");
    ASSERT_FALSE(faces.isNull());
    EXPECT_TRUE(faces->isEmpty());
    EXPECT_EQ(find("a.shx", 2, database.get()), "share/fonts/a.shx");

    document->data.release();
    EXPECT_NO_THROW(fonts()->scanDocumentFonts(document.get()));
}

}  // namespace
