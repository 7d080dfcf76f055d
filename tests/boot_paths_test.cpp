// What happens once the main window is up: the lists of search paths, a new user's folders, the
// default template, and the first scan of the fonts.
#include "boot_finder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class PathsTest : public FinderTest {
  protected:
    // The event without a main window: the quickest way to it.
    void bootWith(const std::string& userMembers, const std::string& coreMembers = "") {
        configure({.coreLibrary = "[]",
                   .user = R"({"version": 256)" + userMembers + "}",
                   .furtherCore = coreMembers});
        ASSERT_EQ(boot(), kVemoNoMainWindow);
        dispatcher()->fireMainWindowReady();
    }

    // What stands under "paths" in the Runtime tree, without the test's folder.
    std::string list(const std::string& key) const {
        std::string text = json(vo_runtime_config("paths/" + key));
        for (std::size_t at = 0; (at = text.find(folder.path(""))) != text.npos;) {
            text.erase(at, folder.path("").size());
        }
        return text;
    }

    bool isThere(const std::string& name) const {
        return std::filesystem::exists(folder.path(name));
    }
};

// ---- lists ----

TEST_F(PathsTest, EachKeyHasAListThoughNobodySetOne) {
    bootWith("");
    for (const char* key :
         {"fontPaths", "supportPaths", "texturePaths", "pattenPaths", "hdidriverPaths",
          "plotconfigPaths", "plotpaperPaths", "plotprintstylesPaths", "templatePaths",
          "fontmapFile", "alternateFontFile", "substituteFontFile"}) {
        EXPECT_EQ(list(key), "[]") << key;
    }
    EXPECT_EQ(vo_runtime_config("paths")->propertyCount(), 12);
    EXPECT_TRUE(vo_user_config("paths", 0).isNull());
}

TEST_F(PathsTest, UsersEntriesComeBeforeTheSystemsAndNoneTwice) {
    bootWith(R"(, "paths": {"texturePaths": ["%EXEPATH%/a", "", "%NONE%/b", 7, "%NONE%/b"],
                            "fontmapFile": "%APPDATAPATH%/user.fmp", "hdidriverPaths": ""})",
             R"(, "paths": {"texturePaths": [")" + folder.path("bin/a") +
                 R"(", "%EXEPATH%/A", "%NONE%/b", "%EXEPATH%/a/"],
                            "fontmapFile": ["%EXEPATH%/1.fmp", "%EXEPATH%/2.fmp"],
                            "pattenPaths": "%TEMPPATH%/%LANGUAGE%", "xRefPaths": "unknown key"})");
    EXPECT_EQ(list("texturePaths"), R"(["bin/a","%NONE%/b","bin/A","bin/a/"])");
    EXPECT_EQ(list("fontmapFile"), R"(["data/user.fmp","bin/1.fmp","bin/2.fmp"])");
    EXPECT_EQ(list("pattenPaths"), R"(["temp/zh-CN"])");
    EXPECT_EQ(list("hdidriverPaths"), "[]");
    EXPECT_EQ(list("xRefPaths"), "null pointer");

    // The lists follow the trees of the moment, and what others put beside them stays.
    vo_runtime_config("paths")->set_propertys("own", "kept", false);
    vo_user_config("paths", 0)->set_propertyJ("texturePaths", textArray({"new"}));
    vo_sys_config("Core/paths")->removeProperty("pattenPaths");
    dispatcher()->fireMainWindowReady();
    EXPECT_EQ(list("texturePaths"), R"(["new","bin/a","bin/A","%NONE%/b","bin/a/"])");
    EXPECT_EQ(list("pattenPaths"), "[]");
    EXPECT_EQ(list("own"), R"("kept")");
}

// ---- a new user's folders ----

TEST_F(PathsTest, FirstFolderOfAListIsFilledForANewUser) {
    for (const std::string part : {"Plotters", "Papers", "PrintStyles", "Support", "Template"}) {
        folder.file("bin/UserDataCache/en-US/" + part + "/sub/" + part + ".dat", part);
        folder.file("bin/UserDataCache/zh-CN/" + part + "/other language");
    }
    folder.file("bin/UserDataCache/en-US/Fonts/f.dat");
    folder.folder("data/TWO");
    folder.file("data/block", "a file");
    const std::string settings = R"(, "language": "en-US", "paths": {
        "plotconfigPaths": ["", "%APPDATAPATH%/deep/one", "%APPDATAPATH%/second"],
        "plotpaperPaths": "%APPDATAPATH%/two",
        "plotprintstylesPaths": "%APPDATAPATH%/block/three",
        "supportPaths": "%APPDATAPATH%/four/",
        "fontPaths": "%APPDATAPATH%/fonts"})";
    bootWith(settings, R"(, "paths": {"templatePaths": ["%APPDATAPATH%/five"]})");
    EXPECT_EQ(contentOf(folder.path("data/deep/one/sub/Plotters.dat")), "Plotters");
    EXPECT_FALSE(isThere("data/deep/one/other language"));
    EXPECT_FALSE(isThere("data/second"));
    // What is there stays as it is, whatever its case; what can't be made keeps nothing else back.
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("data/TWO")));
    EXPECT_FALSE(isThere("data/two"));
    EXPECT_EQ(contentOf(folder.path("data/block")), "a file");
    EXPECT_EQ(contentOf(folder.path("data/four/sub/Support.dat")), "Support");
    EXPECT_EQ(contentOf(folder.path("data/five/sub/Template.dat")), "Template");
    EXPECT_FALSE(isThere("data/fonts"));

    std::filesystem::remove(folder.path("data/four/sub/Support.dat"));
    folder.file("data/five/sub/Template.dat", "the user's");
    std::filesystem::remove(folder.path("data/TWO"));
    std::filesystem::remove(folder.path("data/block"));
    dispatcher()->fireMainWindowReady();
    EXPECT_EQ(contentOf(folder.path("data/two/sub/Papers.dat")), "Papers");
    EXPECT_EQ(contentOf(folder.path("data/block/three/sub/PrintStyles.dat")), "PrintStyles");
    EXPECT_FALSE(isThere("data/four/sub/Support.dat"));
    EXPECT_EQ(contentOf(folder.path("data/five/sub/Template.dat")), "the user's");
}

// ---- the default template ----

class TemplateTest : public PathsTest {
  protected:
    // The template of the first drawing of a new user, for whom these are the template folders and
    // the stored template, as JSON.
    std::string templateOfRun(const std::string& paths, const std::string& stored) {
        journal::clear();
        std::filesystem::remove(userFile());
        configure({.user = R"({"version": 256, "templatePath": )" + stored +
                           R"(, "paths": {"templatePaths": )" + paths + "}}"});
        EXPECT_EQ(boot(), 0);
        shutDown();
        const auto lines = journalOf({"newDocument"});
        return lines.size() == 1 ? local(lines[0].substr(lines[0].find('"') + 1)) : "no drawing";
    }

    static constexpr const char* kOld = R"({"templatePath": "old.dwt"})";
};

TEST_F(TemplateTest, OneInTheFirstTemplateFolderIsStoredAndUsed) {
    folder.file("data/first/vemoiso.dwt");
    folder.folder("data/second/vemoiso.dwt");
    folder.file("data/third/VEMOISO.dwt");
    EXPECT_EQ(templateOfRun(R"("%APPDATAPATH%/first")", "{}"), R"(data/first/vemoiso.dwt" 1)");
    EXPECT_EQ(jsonOfFile(userFile()), R"({"version":256,"templatePath":{"templatePath":")" +
                                          folder.path("data/first/vemoiso.dwt") +
                                          R"("},"paths":{"templatePaths":"%APPDATAPATH%/first"}})");
    EXPECT_EQ(templateOfRun(R"(["", "%APPDATAPATH%/first/", "/none"])", kOld),
              R"(data/first/vemoiso.dwt" 1)");
    // A folder, another name, a later folder, and nothing at all.
    for (const char* paths : {R"("%APPDATAPATH%/second")", R"("%APPDATAPATH%/third")",
                              R"(["%APPDATAPATH%/fourth", "%APPDATAPATH%/first"])", "[]"}) {
        EXPECT_EQ(templateOfRun(paths, kOld), R"(old.dwt" 1)") << paths;
        EXPECT_EQ(templateOfRun(paths, "{}"), R"(" 1)") << paths;
    }
    // There was nothing to fill the folder with, but it is there.
    EXPECT_TRUE(isThere("data/fourth"));
    folder.file("work/vemoiso.dwt");
    EXPECT_EQ(templateOfRun("[]", kOld), R"(vemoiso.dwt" 1)");
}

TEST_F(TemplateTest, FreshlySeededTemplateIsUsedAtOnce) {
    folder.file("bin/UserDataCache/zh-CN/Template/vemoiso.dwt");
    EXPECT_EQ(templateOfRun(R"(["%APPDATAPATH%/templates"])", kOld),
              R"(data/templates/vemoiso.dwt" 1)");
}

// ---- the scan ----

TEST_F(PathsTest, FontsOfTheListsAreScannedOnceTheMainWindowIsUp) {
    configure({.user = R"({"version": 256, "paths": {"fontPaths": "%APPDATAPATH%/fonts"}})"});
    for (const char* name : {"data/fonts/user.shx", "share/fonts/system.shx", "bin/app.shx"}) {
        unifont(name);
    }
    journal::set("without", "Vemo/MainUI");
    ASSERT_EQ(boot(), kVemoNoMainWindow);
    EXPECT_THAT(indexed("shx"), IsEmpty());
    shutDown();
    journal::set("without", "");
    ASSERT_EQ(boot(), 0);
    EXPECT_THAT(indexed("shx"),
                ElementsAre("share/fonts/system.shx", "data/fonts/user.shx", "bin/app.shx"));
}

TEST_F(PathsTest, ScanComesLastAndItsErrorReachesTheMainProgram) {
    configure({.user = R"({"version": 256, "paths": {"templatePaths": "%APPDATAPATH%/new",
                           "substituteFontFile": "%EXEPATH%/s.map"}})"});
    folder.file("bin/UserDataCache/zh-CN/Template/vemoiso.dwt");
    unifont("share/fonts/a.shx");
    const std::string cut = folder.file("share/fonts/b.shx", "cut");
    try {
        boot();
        ADD_FAILURE() << "start-up went on";
    } catch (const OdError& error) {
        EXPECT_EQ(error.code(), eEndOfFile);
        EXPECT_THAT(utf8(error.description()), HasSubstr(cut));
    }
    EXPECT_EQ(journal::lines().back(), "startUp");
    EXPECT_EQ(list("substituteFontFile"), R"(["bin/s.map"])");
    EXPECT_EQ(json(vo_user_config("templatePath/templatePath", 0)),
              '"' + folder.path("data/new/vemoiso.dwt") + '"');
    EXPECT_THAT(indexed("shx"), ElementsAre("share/fonts/a.shx"));
    EXPECT_EQ(shutDown(), 0);
    EXPECT_EQ(vodbSystemServices(), nullptr);
    EXPECT_THAT(contentOf(userFile()), HasSubstr("vemoiso.dwt"));
}

}  // namespace
