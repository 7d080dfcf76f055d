// The configuration: where the one tree comes from, how versions are reconciled, what is written
// back.
#include <global/log.h>

#include <filesystem>

#include "boot_support.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr const char* kNotFound = "5 voappservice loadSystemConfig 查找VEMO配置文件失败";
constexpr const char* kUnreadable = "5 voappservice loadSystemConfig 读取配置文件失败";
constexpr const char* kNotWritten = "5 voappservice saveUserConfig 写入用户配置文件失败";

std::string notCreated(const std::string& path) {
    return "4 voappservice loadUserConfig 创建" + path + "文件失败！";
}

class ConfigTest : public BootTest {
  protected:
    // A run up to the main window, with this as the system file.
    void bootWith(const std::string& systemFile, const std::vector<std::string>& arguments = {}) {
        folder.file("bin/vemo.json", systemFile);
        ASSERT_EQ(boot(arguments), kVemoNoMainWindow);
    }
};

// ---- the version rule ----

// The system's branch has an empty key, which no merge takes over.
struct VersionRow {
    const char* name;
    int system;          // 0 for a branch without a version
    int user;            // 0 for a first run
    const char* branch;  // what becomes of the user's tree
};

void PrintTo(const VersionRow& row, std::ostream* out) {
    *out << row.name;
}

class VersionRule : public ConfigTest, public testing::WithParamInterface<VersionRow> {};

TEST_P(VersionRule, DecidesTheUserBranch) {
    const VersionRow& row = GetParam();
    if (row.user != 0) {
        folder.file("data/user.json", R"({"version": )" + std::to_string(row.user) +
                                          R"(, "both": "user's", "own": {"a": 1}})");
    }
    const std::string version =
        row.system == 0 ? "" : R"("version": )" + std::to_string(row.system) + ", ";
    bootWith(R"({"User": {)" + version + R"("both": 7, "": 0, "new": ["x"]}})");
    EXPECT_EQ(json(vo_sys_config("User")), row.branch);
    EXPECT_EQ(json(vo_user_config("", 0)), row.branch);
    EXPECT_FALSE(std::string(row.branch).find("own") != std::string::npos &&
                 vo_user_config("own/a", 0).isNull());
    shutDown();
    EXPECT_EQ(jsonOfFile(userFile()), row.branch);
}

constexpr const char* kUsersOwn513 = R"({"version":513,"both":"user's","own":{"a":1}})";

INSTANTIATE_TEST_SUITE_P(
    Rows, VersionRule,
    testing::Values(VersionRow{"FirstRun", 0x0101, 0,
                               R"({"version":257,"both":7,"":0,"new":["x"]})"},
                    VersionRow{"SystemMinorAhead", 0x0102, 0x0101,
                               R"({"version":258,"both":"user's","own":{"a":1},"new":["x"]})"},
                    VersionRow{"UserMinorAhead", 0x0101, 0x0102,
                               R"({"version":257,"both":"user's","own":{"a":1},"new":["x"]})"},
                    VersionRow{"UserMajorAheadMinorsEqual", 0x0101, 0x0201, kUsersOwn513},
                    VersionRow{"UserMajorAheadMinorsDiffer", 0x0102, 0x0201,
                               R"({"version":258,"both":"user's","own":{"a":1},"new":["x"]})"},
                    VersionRow{"SystemMajorAhead", 0x0201, 0x0101,
                               R"({"version":513,"both":7,"":0,"new":["x"]})"},
                    VersionRow{"NegativeUserVersionIsOneZero", 0x0100, -3,
                               R"({"version":-3,"both":"user's","own":{"a":1}})"},
                    VersionRow{"NegativeUserVersionIsMerged", 0x0101, -3,
                               R"({"version":257,"both":"user's","own":{"a":1},"new":["x"]})"},
                    VersionRow{"SystemWithoutVersionIsOneZero", 0, 0x0101,
                               R"({"version":0,"both":"user's","own":{"a":1},"new":["x"]})"}),
    [](const auto& row) { return std::string(row.param.name); });

// The version rule discards what the user had; the file is its only copy then.
TEST_F(ConfigTest, OutdatedUserFileIsKeptOnceBesideTheNewOne) {
    const std::string kept = folder.path("data/user.v1.1.json");
    const auto runWith = [&](const std::string& userText) {
        folder.file("data/user.json", userText);
        bootWith(R"({"User": {"version": 513, "new": 1}})");
        // Elsewhere, where nothing is at stake.
        vo_save_user_config(OdAnsiString(folder.path("data/other.json")));
        const bool early = std::filesystem::exists(folder.path("data/user.v1.1-2.json"));
        vo_save_user_config("");
        shutDown();
        EXPECT_EQ(jsonOfFile(userFile()), R"({"version":513,"new":1})");
        return early;
    };
    const std::string first = "{ \"version\": 257,\n\"mine\": [1] }\n";
    runWith(first);
    EXPECT_EQ(contentOf(kept), first);
    runWith(first);
    EXPECT_FALSE(std::filesystem::exists(folder.path("data/user.v1.1-2.json")));

    const std::string second = R"({"version": 257, "mine": [2]})";
    EXPECT_FALSE(runWith(second)) << "kept before it was overwritten";
    EXPECT_EQ(contentOf(kept), first);
    EXPECT_EQ(contentOf(folder.path("data/user.v1.1-2.json")), second);

    // Nothing but a version, as a new user file has it.
    runWith(R"({"version": 1})");
    EXPECT_FALSE(std::filesystem::exists(folder.path("data/user.v0.1.json")));
}

// There is no room in the name for what the copy adds to it.
TEST_F(ConfigTest, OutdatedUserFileThatCannotBeKeptStays) {
    const std::string file = folder.path("data/" + std::string(248, 'u') + ".json");
    const std::string text = R"({"version": 257, "mine": [1]})";
    folder.file(file.substr(folder.path().size() + 1), text);
    bootWith(R"({"User": {"version": 513, "new": 1}})", {"-u", file});
    vo_save_user_config("");
    EXPECT_EQ(contentOf(file), text);
    EXPECT_THAT(libraryLog(), ElementsAre(kNotWritten));
    shutDown();
    EXPECT_EQ(contentOf(file), text);
}

TEST_F(ConfigTest, SystemFileWithoutUserBranchTakesTheUsersTree) {
    for (const char* systemFile : {R"({"Core": {}})", R"({"User": "no object"})"}) {
        folder.file("data/user.json", R"({"version": 5, "colour": "red"})");
        bootWith(systemFile);
        EXPECT_EQ(json(vo_sys_config("User")), R"({"version":5,"colour":"red"})");
        shutDown();
    }
}

// ---- the system file ----

TEST_F(ConfigTest, SystemFileThatCannotServeIsLoggedAndDoneWithout) {
    std::filesystem::remove(folder.path("bin/vemo.json"));
    ASSERT_EQ(boot(), kVemoNoMainWindow);
    EXPECT_THAT(libraryLog(), ElementsAre(kNotFound));
    EXPECT_EQ(json(vo_sys_config("Core")), R"({"Library":[]})");
    EXPECT_EQ(json(vo_sys_config("User")), R"({"version":1})");
    shutDown();

    for (const char* broken : {"{\"Core\": {\"seen\": true}", "[1, 2]", "", "\"text\""}) {
        SCOPED_TRACE(broken);
        clearLibraryLog();
        bootWith(broken);
        EXPECT_THAT(libraryLog(), ElementsAre(kUnreadable));
        EXPECT_EQ(json(vo_sys_config("Core")), R"({"Library":[]})");
        EXPECT_EQ(json(vo_runtime_config("loadedModules")),
                  R"({"core":[],"fixExtLibray":[],"odaExt":[]})");
        shutDown();
    }
}

TEST_F(ConfigTest, RuntimeBranchSurvivesTheSystemFileAndTakesItsAdditions) {
    bootWith(R"({"Core": {"seen": 1}, "Runtime": {"ExeRootPath": "/stolen", "site": {"a": 1},
                 "ExeOption": {"template": "/stolen", "extra": 2}}})",
             {"-t", "own.dwt"});
    EXPECT_EQ(json(vo_sys_config("Core")), R"({"seen":1})");
    EXPECT_EQ(json(vo_runtime_config("ExeRootPath")), '"' + folder.path("bin") + '"');
    EXPECT_EQ(json(vo_runtime_config("ExeOption")), R"({"template":"own.dwt","extra":2})");
    EXPECT_EQ(json(vo_runtime_config("site")), R"({"a":1})");
    EXPECT_TRUE(vo_runtime_config("defaultWorkingDatabase")->ptrValue());
    shutDown();
    EXPECT_THAT(contentOf(userFile()), testing::Not(HasSubstr("site")));

    bootWith(R"({"Runtime": 3})");
    EXPECT_EQ(json(vo_runtime_config("ExeRootPath")), '"' + folder.path("bin") + '"');
}

TEST_F(ConfigTest, SystemFileByOptionIsSearchedAsAnyFileIs) {
    std::filesystem::current_path(folder.folder("work"));
    folder.file("work/Site.JSON", R"({"Core": {"from": "site"}})");
    ASSERT_EQ(boot({"-c", "site.json"}), kVemoNoMainWindow);
    EXPECT_EQ(json(vo_sys_config("Core/from")), R"("site")");
}

TEST_F(ConfigTest, SystemCodePage) {
    struct Row {
        const char* core;
        OdCodePageId expected;
    };
    // The second number is known from the map beside the program alone.
    folder.file("bin/adinit.dat", "# pages\n4711 30\n");
    const Row rows[] = {{R"({})", OdCodePageId::kAnsi936},
                        {R"({"AppInfo": {"codepage": 0}})", OdCodePageId::kAnsi936},
                        {R"({"AppInfo": {"codepage": 1252}})", OdCodePageId::kAnsi1252},
                        {R"({"AppInfo": {"codepage": 4711}})", OdCodePageId::kAnsi1252}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.core);
        bootWith(R"({"Core": )" + std::string(row.core) + "}");
        EXPECT_EQ(odrxSystemServices()->systemCodePage(), row.expected);
        shutDown();
    }
}

TEST_F(ConfigTest, LogSettings) {
    const std::string modules = R"("Library": ["ghost"])";
    bootWith(R"({"Core": {)" + modules + "}}");
    EXPECT_EQ(vemo_log_level(), 4);
    EXPECT_THAT(libraryLog(), ElementsAre("4 vemo_root operator() ghost加载失败!"));
    shutDown();

    const std::string debug = R"("log2file": true, "logfile": "%TEMPPATH%/run.log", "grade": )";
    clearLibraryLog();
    bootWith(R"({"Core": {)" + modules + R"(, "Debug": {)" + debug + "1}}}");
    EXPECT_EQ(vemo_log_level(), 1);
    EXPECT_THAT(contentOf(folder.path("temp/run.log")), HasSubstr("operator() ghost加载失败!\n"));
    shutDown();

    clearLibraryLog();
    bootWith(R"({"Core": {)" + modules + R"(, "Debug": {)" + debug + "5}}}");
    EXPECT_THAT(libraryLog(), IsEmpty());
}

// ---- the user file ----

TEST_F(ConfigTest, UserFileThatCannotBeMade) {
    const std::string path = folder.path("missing/user.json");
    configure({.user = R"({"version": 256, "a": 1})"});
    ASSERT_EQ(boot({"-u", path}), 0);
    EXPECT_EQ(json(vo_sys_config("User")), R"({"version":256,"a":1})");
    EXPECT_EQ(json(vo_user_config("version", 0)), "1");
    shutDown();
    EXPECT_THAT(libraryLog(), ElementsAre(notCreated(path), notCreated(path), kNotWritten));
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(std::filesystem::exists(userFile()));
}

TEST_F(ConfigTest, DamagedUserFileThatIsFoundLateIsNeverOverwritten) {
    const std::string damaged = R"({"version": 257, "work": "of years")";
    folder.file("data/mine.json", damaged);
    // The variable has no value yet when the file is looked for the first time, and there is no
    // folder of that name to make a file in.
    bootWith(R"({"User": {"version": 256, "a": 1}})", {"-u", "%APPDATAPATH%/mine.json"});
    EXPECT_EQ(json(vo_user_config("", 0)), R"({"version":256,"a":1})");
    EXPECT_TRUE(vo_user_config("a", kElementObject).isNull());
    shutDown();
    EXPECT_EQ(contentOf(folder.path("data/mine.json")), damaged);
}

TEST_F(ConfigTest, DamagedUserFileIsNeverOverwritten) {
    for (const std::string damaged : {R"({"version": 257, "work": "of years")", "[]", ""}) {
        SCOPED_TRACE(damaged);
        clearLibraryLog();
        folder.file("data/user.json", damaged);
        bootWith(R"({"User": {"version": 256, "a": 1}})");
        EXPECT_EQ(json(vo_user_config("", 0)), R"({"version":256,"a":1})");
        EXPECT_TRUE(vo_user_config("a", kElementObject).isNull());
        vo_save_user_config("");
        shutDown();
        EXPECT_EQ(contentOf(userFile()), damaged);
        EXPECT_THAT(libraryLog(), ElementsAre(kNotWritten, kNotWritten));
        EXPECT_FALSE(std::filesystem::exists(userFile() + ".tmp"));
    }
}

TEST_F(ConfigTest, DamageIsNamedByFileAndPlace) {
    folder.file("data/user.json", "{\n  \"a\": 1,\n  \"b\" 2\n}");
    testing::internal::CaptureStderr();
    bootBare();
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_THAT(log, HasSubstr(userFile() + ": line 3, column "));
}

TEST_F(ConfigTest, UsersTreeIsSavedAtTheEndAndOnRequest) {
    bootBare();
    vo_user_config("view", kElementObject)->set_propertyI("zoom", 3, false);
    vo_save_user_config(OdAnsiString(folder.path("copy.json")));
    EXPECT_EQ(jsonOfFile(folder.path("copy.json")), R"({"version":256,"view":{"zoom":3}})");
    EXPECT_EQ(contentOf(userFile()), R"({"version":1})");
    vo_save_user_config("");
    EXPECT_EQ(jsonOfFile(userFile()), R"({"version":256,"view":{"zoom":3}})");
    vo_user_config("view", 0)->set_propertyI("zoom", 4, false);
    shutDown();
    EXPECT_EQ(jsonOfFile(userFile()), R"({"version":256,"view":{"zoom":4}})");
    // For people to edit.
    EXPECT_THAT(contentOf(userFile()), HasSubstr("\n"));
    EXPECT_THAT(libraryLog(), IsEmpty());

    bootBare();
    EXPECT_EQ(json(vo_user_config("view/zoom", 0)), "4");
}

TEST_F(ConfigTest, UserFileByOptionMayHoldVariables) {
    // While the command line is read there is no tree to take their values from.
    std::filesystem::current_path(folder.folder("work"));
    folder.file("documents/mine.json", R"({"version": 256, "mine": true})");
    const std::string option = "%DOCUMENTPATH%/mine.json";
    bootBare({"-u", option});
    EXPECT_THAT(libraryLog(), ElementsAre(notCreated(option)));
    EXPECT_EQ(json(vo_user_config("mine", 0)), "true");
    vo_user_config("more", kElementArray);
    shutDown();
    EXPECT_EQ(jsonOfFile(folder.path("documents/mine.json")),
              R"({"version":256,"mine":true,"more":[]})");
    EXPECT_FALSE(std::filesystem::exists(userFile()));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("work")));
}

// The deepest file that can be read doesn't fit below the tree's root any more.
TEST_F(ConfigTest, UserFileAsDeepAsAFileMayBe) {
    const auto nested = [](int levels) {
        return R"({"version": 256, "a": )" + std::string(static_cast<std::size_t>(levels), '[') +
               std::string(static_cast<std::size_t>(levels), ']') + "}";
    };
    for (int levels = IElementValueBase::kMaxDepth - 3; levels <= IElementValueBase::kMaxDepth;
         ++levels) {
        SCOPED_TRACE(levels);
        folder.file("data/user.json", nested(levels));
        bootBare();
        EXPECT_EQ(json(vo_runtime_config("ExeRootPath")), '"' + folder.path("bin") + '"');
        shutDown();
    }
}

}  // namespace
