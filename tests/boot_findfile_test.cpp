// Where support files are found: the host's findFile and the service behind it.
#include "boot_finder.h"

using testing::ElementsAre;

namespace {

using Host = OdDbBaseHostAppServices;

/// Answers with what it was asked.
class OtherFinder : public vosi::VosiFindFontSvr {
  public:
    OdString findFile(const OdString& name, OdDbBaseDatabase* database, int hint) override {
        note("findFile " + utf8(name) + (database ? " with database " : " ") +
             std::to_string(hint));
        return L"/other/" + name;
    }
    OdString findFileInDocument(const OdString&, OdRxObject*, int) override { return OdString(); }
    void scanFonts(int) override {}
    void scanDocumentFonts(OdRxObject*) override {}
    bool ttfFileNameByDescriptor(const OdTtfDescriptor&, OdString&) override { return false; }
};

class FindFileTest : public FinderTest {
  protected:
    FindFileTest() {
        bootBare();
        openDrawing();
        folder.folder("support");
        folder.folder("more");
        setPaths("supportPaths", {folder.path("support"), folder.path("more")});
    }

    std::string find(const std::string& name, OdDbBaseDatabase* asking = nullptr,
                     Host::FindFileHint hint = Host::kDefault) {
        return local(vodbSystemServices()->findFile(wide(name), asking, hint));
    }
    std::string findInDocument(const std::string& name, OdRxObject* asking) {
        return local(fonts()->findFileInDocument(wide(name), asking, Host::kDefault));
    }

    // Finds, takes away what was found and finds again, until nothing is left.
    std::vector<std::string> findOneAfterAnother(const std::string& name,
                                                 OdDbBaseDatabase* asking = nullptr,
                                                 Host::FindFileHint hint = Host::kDefault) {
        std::vector<std::string> answers;
        for (std::string found = find(name, asking, hint); !found.empty();
             found = find(name, asking, hint)) {
            answers.push_back(found);
            std::filesystem::remove(folder.path(found));
        }
        return answers;
    }
};

TEST_F(FindFileTest, RelativeNameOfADrawing) {
    for (const char* name : {"more/Tile.pat", "support/tile.PAT", "companion/tile.pat",
                             "work/TILE.pat", "drawings/tile.pat"}) {
        folder.file(name);
    }
    EXPECT_THAT(findOneAfterAnother("tile.pat", database.get()),
                ElementsAre("drawings/tile.pat", "work/TILE.pat", "companion/tile.pat",
                            "support/tile.PAT", "more/Tile.pat"));
}

TEST_F(FindFileTest, NamesOwnFolderIsPutBehindEachFolderAsItStands) {
    for (const char* name :
         {"drawings/sub/a.pat", "drawings/a.pat", "work/Sub/A.pat", "companionsub/a.pat",
          "companion/sub/a.pat", "companion/a.pat", "supportsub/a.pat", "support/a.pat"}) {
        folder.file(name);
    }
    // The drawing's folder ends in a separator and others don't; then each folder by the bare name.
    EXPECT_THAT(
        findOneAfterAnother("sub/a.pat", database.get()),
        ElementsAre("drawings/sub/a.pat", "drawings/a.pat", "work/Sub/A.pat", "companionsub/a.pat",
                    "supportsub/a.pat", "companion/a.pat", "support/a.pat"));
}

TEST_F(FindFileTest, WithoutADrawing) {
    for (const char* name : {"drawings/a.pat", "companion/a.pat", "support/a.pat"}) {
        folder.file(name);
    }
    EXPECT_THAT(findOneAfterAnother("a.pat"), ElementsAre("support/a.pat"));
    EXPECT_EQ(find(""), "");
    // A drawing that has no file yet, and whose document isn't known, comes to the same.
    folder.file("support/a.pat");
    const OdDbDatabasePtr unnamed = vodbSystemServices()->createDatabase(true, 0);
    EXPECT_THAT(findOneAfterAnother("a.pat", unnamed.get()), ElementsAre("support/a.pat"));
}

TEST_F(FindFileTest, AbsoluteNameIsTakenAsItStandsAndThenByItsBareName) {
    for (const char* name : {"drawings/a.pat", "companion/a.pat", "support/A.pat", "old/a.pat"}) {
        folder.file(name);
    }
    EXPECT_THAT(findOneAfterAnother(folder.path("OLD/A.PAT")),
                ElementsAre("old/a.pat", "support/A.pat"));
    folder.file("support/b.pat");
    folder.file("drawings/b.pat");
    EXPECT_EQ(find("C:\\patterns\\b.pat", database.get()), "support/b.pat");
    // The document's folder is among the folders, the drawing's own is for relative names alone.
    EXPECT_THAT(findOneAfterAnother("/nowhere/a.pat", database.get()),
                ElementsAre("companion/a.pat"));
}

TEST_F(FindFileTest, EachHintHasItsListOfFolders) {
    struct Row {
        int hint;
        const char* key;
    };
    const Row rows[] = {
        {Host::kEmbeddedImageFile, "EmbeddedImagePath"},
        {Host::kXRefDrawing, "xRefPaths"},
        {Host::kPatternFile, "pattenPaths"},
        {Host::kFontMapFile, "fontmapFile"},
        {Host::kTextureMapFile, "texturePaths"},
        {7, "supportPaths"},
        {11, "supportPaths"},
        {-1, "supportPaths"},
    };
    for (const Row& row : rows) {
        setPaths(row.key, {folder.path(row.key)});
        folder.file(std::string(row.key) + "/x.dat");
    }
    for (const Row& row : rows) {
        EXPECT_EQ(local(fonts()->findFile("x.dat", nullptr, row.hint)),
                  std::string(row.key) + "/x.dat");
    }
}

TEST_F(FindFileTest, InADocument) {
    folder.file("companion/a.pat");
    folder.file("support/a.pat");
    folder.file("support/b.pat");
    folder.file("work/C.pat");
    EXPECT_EQ(findInDocument("a.pat", document.get()), "companion/a.pat");
    EXPECT_EQ(findInDocument("b.pat", document.get()), "support/b.pat");
    EXPECT_EQ(findInDocument("c.pat", document.get()), "work/C.pat");
    EXPECT_EQ(findInDocument("/nowhere/b.pat", nullptr), "support/b.pat");
    EXPECT_EQ(findInDocument("", document.get()), "");
}

TEST_F(FindFileTest, DatabaseOfAClassWithoutTheExtensionIsRefused) {
    const auto stranger = OdRxObjectImpl<OdDbBaseDatabase>::createObject();
    EXPECT_THROW(find("a.pat", stranger.get()), OdError_NotThatKindOfClass);
    EXPECT_THROW(find("/absolute/a.pat", stranger.get()), OdError_NotThatKindOfClass);
    EXPECT_EQ(find("", stranger.get()), "");
}

TEST_F(FindFileTest, AnotherServiceUnderTheKeyAnswersInstead) {
    const OdRxObjectPtr own = vo_arbitDict_getservice(vosi::kFindFontsKey);
    vo_arbitDict_regservice(vosi::kFindFontsKey, OdRxObjectImpl<OtherFinder>::createObject());
    EXPECT_EQ(find("a.shx", database.get(), Host::kCompiledShapeFile), "/other/a.shx");
    EXPECT_THAT(journalOf({"findFile"}), ElementsAre("findFile a.shx with database 2"));
    // The library keeps its own alive: this test's reference and that one.
    EXPECT_EQ(own->numRefs(), 2);
    vo_arbitDict_clearservice(vosi::kFindFontsKey);
    folder.file("support/a.pat");
    EXPECT_EQ(find("a.pat"), "");
}

TEST_F(FindFileTest, FilesOfAFolderByMask) {
    for (const char* name :
         {"support/a.SHX", "support/b.shx", "support/c.pat", "support/sub/d.shx"}) {
        folder.file(name);
    }
    OdStringArray found;
    found.append(L"kept");
    vodbSystemServices()->collectFilePathsInDirectory(found, wide(folder.path("support")),
                                                      L"*.shx");
    std::vector<std::string> names;
    for (const OdString& path : std::as_const(found)) {
        names.push_back(utf8(path));
    }
    EXPECT_THAT(names,
                ElementsAre("kept", folder.path("support/a.SHX"), folder.path("support/b.shx")));
}

}  // namespace
