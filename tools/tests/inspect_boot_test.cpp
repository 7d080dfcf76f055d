// vemo-inspect boot: what a whole life of the library shows.
#include <algorithm>

#include "inspectsupport.h"

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kUserFile = "config/vemocad/user.json";

class InspectBootTest : public InspectTest {
  protected:
    std::string writeUserFile(const std::string& text) const {
        fs::create_directories(scratch.path("config/vemocad"));
        return scratch.write(kUserFile, text);
    }
};

std::string fileOfService(const rapidjson::Value& boot, const std::string& key) {
    const rapidjson::Value* service = entry(boot, "/services", "key", key);
    return service ? fs::path(textAt(*service, "/file")).filename() : "nothing";
}

TEST_F(InspectBootTest, TheApplicationAsItIsBuilt) {
    const std::string drawing = fs::path(builtProgram()).parent_path() / "drawings/site.dxf";
    const auto boot = answer({"boot", "--", builtProgram(), drawing}, "boot");
    EXPECT_EQ(at(boot, "/result"), "0");
    EXPECT_EQ(at(boot, "/error"), "null");
    EXPECT_THAT(textAt(boot, "/sysConfigPath"), EndsWith("/bin/vemo.json"));

    ASSERT_EQ(at(boot, "/modules/8"), "nothing");
    for (const rapidjson::Value& module : boot["modules"].GetArray()) {
        EXPECT_EQ(at(module, "/loaded"), "true");
        EXPECT_THAT(textAt(module, "/file"), EndsWith("/modules/" + textAt(module, "/asked")));
        EXPECT_EQ(at(module, "/left"), "[]");
    }
    EXPECT_NE(entry(boot, "/modules", "asked", "libusermodule.so"), nullptr);

    EXPECT_EQ(fileOfService(boot, "Vemo/MainUI"), "libmainui.so");
    EXPECT_EQ(fileOfService(boot, "Core/Fiber"), "vemo-inspect");
    EXPECT_THAT(textAt(*entry(boot, "/services", "key", "Vemo/MainUI"), "/type"),
                HasSubstr("vemoapp::TerminalWindow"));

    EXPECT_EQ(at(boot, "/tree/User/version"), "256");
    EXPECT_NE(at(boot, "/tree/Runtime/ExeRootPath"), "nothing");
    EXPECT_EQ(at(boot, "/tree/Runtime/Fonts"), "nothing");
    EXPECT_EQ(at(boot, "/tree/User"), at(boot, "/userTree"));
    EXPECT_EQ(textAt(boot, "/steps/0/name"), "memory pool");
    const rapidjson::Value* first = entry(boot, "/steps", "name", "first drawing");
    ASSERT_TRUE(first);
    EXPECT_THAT(at(*first, "/did"), HasSubstr("opens " + drawing));
    EXPECT_THAT(textAt(boot, "/userFile"), HasSubstr("\"version\": 256"));
    EXPECT_FALSE(fs::exists(scratch.path("config/vemocad")));
}

TEST_F(InspectBootTest, WhatModulesPrintLeavesTheAnswerAlone) {
    const vemoapp::RunResult result = run({"boot", "--", builtProgram()});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, AllOf(StartsWith("Result of vemo_root: 0\n"),
                                     Not(HasSubstr("User module")), Not(HasSubstr("Closed 1"))));
    EXPECT_THAT(result.errors, AllOf(HasSubstr("User module"), HasSubstr("Closed 1 drawing.")));
}

TEST_F(InspectBootTest, TheTextHasEachMemberOfTheTreeOnALine) {
    const std::string longText(5000, 'x');
    const std::string program =
        programWith(R"({"Core": {"long": ")" + longText + R"(", "list": [1, {"a,b": "{:"}]}})");
    const vemoapp::RunResult result = run({"boot", "--", program});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("\nTree\n{\n  \"Core\": {\n    \"long\": \"" + longText +
                                         "\",\n    \"list\": [\n      1,\n      {\n"
                                         "        \"a,b\": \"{:\"\n      }\n    ]\n  },\n"));
    EXPECT_THAT(result.output, HasSubstr("\nUser tree\n{\n  \""));
}

TEST_F(InspectBootTest, HelpPrintsTheUsageTextOfTheRun) {
    const vemoapp::RunResult result = run({"boot", "--json", "--", builtProgram(), "--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output,
                AllOf(StartsWith("欢迎使用 VemoCAD 2021. \n"), HasSubstr("--userconfig=")));
    EXPECT_THAT(result.errors, IsEmpty());
}

// ---- the user's file ----

TEST_F(InspectBootTest, OriginOfTheSettings) {
    writeUserFile(R"({"version": 255, "measureInit": 0, "mine": 1})");
    const auto older = answer({"boot", "--", builtProgram()}, "boot");
    EXPECT_EQ(textAt(older, "/origin/measureInit"), "system file");
    EXPECT_EQ(at(older, "/tree/User/measureInit"), "1");
    EXPECT_EQ(at(older, "/origin/mine"), "nothing");

    writeUserFile(R"({"version": 513, "measureInit": 0, "mine": 1})");
    const auto newer = answer({"boot", "--", builtProgram()}, "boot");
    EXPECT_EQ(textAt(newer, "/origin/measureInit"), "user file");
    EXPECT_EQ(at(newer, "/tree/User/measureInit"), "0");
    EXPECT_EQ(textAt(newer, "/origin/mine"), "user file");
    EXPECT_EQ(textAt(newer, "/origin/SubstituteFont"), "system file");
}

TEST_F(InspectBootTest, TheUsersOwnFilesStayAsTheyAre) {
    const std::string text = R"({"version":256,"mine":1})";
    writeUserFile(text);
    const auto own = answer({"boot", "--", builtProgram()}, "boot");
    EXPECT_EQ(at(own, "/tree/User/mine"), "1");
    EXPECT_EQ(scratch.read(kUserFile), text);

    // A system configuration beside which the user file lies.
    const std::string program = programWith(R"({"Core": {}, "User": {"version": 256}})");
    const std::string other = R"({"version":256,"other":2})";
    const std::vector<std::vector<std::string>> lines = {
        {program, "-u", "bin/u.json"},       {program, "-ubin/u.json"},
        {program, "x.dxf", "-Lubin/u.json"}, {program, "--userconfig=bin/u.json", "x.dxf"},
        {program, "--user", "bin/u.json"},   {program, "-u", "%EXEPATH%/u.json"},
    };
    for (std::vector<std::string> line : lines) {
        scratch.write("bin/u.json", other);
        line.insert(line.begin(), {"boot", "--"});
        const auto boot = answer(line, "boot");
        EXPECT_EQ(at(boot, "/tree/User/other"), "2") << testing::PrintToString(line);
        EXPECT_EQ(scratch.read("bin/u.json"), other) << testing::PrintToString(line);
    }
    const vemoapp::RunResult refused = run({"boot", "--", program, "-u", "bin/%LANGUAGE%.json"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, HasSubstr("%LANGUAGE%"));
    EXPECT_EQ(scratch.read(kUserFile), text);
}

TEST_F(InspectBootTest, AppDataIsWrittenAsInARealRun) {
    fs::create_directory(scratch.path("data"));
    scratch.write("data/user.json", R"({"version":256,"mine":1})");
    const auto boot = answer({"boot", "--appdata", "data", "--", builtProgram()}, "boot");
    EXPECT_EQ(scratch.read("data/user.json"), textAt(boot, "/userFile"));
    EXPECT_THAT(scratch.read("data/user.json"), HasSubstr("\"mine\": 1"));
    EXPECT_TRUE(fs::exists(scratch.path("data/Template")));
}

TEST_F(InspectBootTest, RelativeFoldersAreBelowTheWorkingFolder) {
    for (const char* name : {"data", "papers", "temporary", "fonts", "modules"}) {
        fs::create_directory(scratch.path(name));
    }
    scratch.copyFile(fs::path(testModules()) / "libstage.so", "modules/libstage.so");
    const std::string program =
        programWith(R"({"Core": {"CoreLibrary": ["stage"]}, "User": {"version": 256}})");
    const auto boot =
        answer({"boot", "--appdata", "data", "--documents", "./papers", "--temp",
                "data/../temporary", "--sysfonts", "fonts", "--modules", "modules", "--", program},
               "boot");
    const auto runtime = [&](const std::string& key) {
        return textAt(boot, "/tree/Runtime/" + key);
    };
    EXPECT_EQ(runtime("AppDataPath"), scratch.path("data"));
    EXPECT_EQ(runtime("DocumentPath"), scratch.path("papers"));
    EXPECT_EQ(runtime("TempPath"), scratch.path("temporary"));
    EXPECT_EQ(runtime("SysFontPath"), scratch.path("fonts"));
    EXPECT_EQ(textAt(boot, "/modules/0/file"), scratch.path("modules/libstage.so"));
}

TEST_F(InspectBootTest, WhatAModuleDoesWhileItIsLoaded) {
    const std::string program =
        programWith(R"({"Core": {"CoreLibrary": ["loader"]}, "User": {"version": 256}})");
    const std::vector<std::string> line = {"boot", "--modules", testModules(), "--", program};
    const auto boot = answer(line, "boot");
    const rapidjson::Value* loader = entry(boot, "/modules", "asked", "libloader.so");
    ASSERT_TRUE(loader);
    EXPECT_EQ(textAt(*loader, "/did/0"), "loaded libalpha.so");
    EXPECT_THAT(textAt(*loader, "/did/1"), AllOf(StartsWith("wrote "), EndsWith("/user.json")));
    const rapidjson::Value* inner = entry(boot, "/modules", "asked", "libalpha.so");
    ASSERT_TRUE(inner);
    EXPECT_EQ(at(*inner, "/loaded"), "true");
    EXPECT_EQ(at(*inner, "/did"), "[]");
    EXPECT_EQ(at(*entry(boot, "/steps", "name", "first wave of modules"), "/did"),
              R"(["loaded libloader.so"])");
    EXPECT_THAT(run(line).output, HasSubstr(" - loaded libalpha.so\n"));
}

// ---- what goes wrong ----

TEST_F(InspectBootTest, ABrokenConfigurationIsAnAnswer) {
    const std::string program = programWith("{\"Core\": {\n  \"x\": }");
    const auto boot = answer({"boot", "--", program}, "boot");
    EXPECT_EQ(at(boot, "/result"), "401");
    EXPECT_THAT(textAt(boot, "/log/0/text"), HasSubstr("/bin/vemo.json: line 2, column "));
}

TEST_F(InspectBootTest, AFolderThatCannotBeReadIsNamed) {
    const std::string program = programWith(
        R"({"Core": {"CoreLibrary": ["stage"], "paths": {"fontPaths": ["%EXEPATH%/vemo.json"]}},)"
        R"("User": {"version": 256}})");
    const auto boot = answer({"boot", "--modules", testModules(), "--", program}, "boot");
    EXPECT_EQ(at(boot, "/result"), "0");
    EXPECT_THAT(at(boot, "/steps"), HasSubstr("/bin/vemo.json can't be read: Not a directory"));
}

TEST_F(InspectBootTest, ModulesThatFailAndWhatTheyLeave) {
    const std::string program =
        programWith(R"({"Core": {"OdaLibrary": ["drawing_undefined.so"],)"
                    R"("CoreLibrary": ["nowhere", "leftservice"]}, "User": {"version": 256}})");
    fs::create_directory(scratch.path("modules"));
    scratch.copyFile(fs::path(testModules()) / "libdrawing_undefined.so",
                     "modules/drawing_undefined.so");
    scratch.copyFile(fs::path(testModules()) / "libleftservice.so", "modules/libleftservice.so");
    const auto boot = answer({"boot", "--modules", "modules", "--", program}, "boot");
    const auto module = [&](const char* asked, const char* member) {
        const rapidjson::Value* found = entry(boot, "/modules", "asked", asked);
        return found ? at(*found, member) : "no record";
    };
    EXPECT_THAT(module("drawing_undefined.so", "/reason"),
                HasSubstr("undefined symbol: drawingNowhereDefined"));
    EXPECT_THAT(module("libnowhere.so", "/reason"),
                AllOf(HasSubstr("libnowhere.so"), HasSubstr("No such file")));
    EXPECT_EQ(module("libnowhere.so", "/loaded"), "false");
    EXPECT_EQ(module("libleftservice.so", "/reason"), "null");
    EXPECT_EQ(module("libleftservice.so", "/left"), R"(["Test/Leftover"])");
    EXPECT_EQ(fileOfService(boot, "Test/Leftover"), "libleftservice.so");
}

TEST_F(InspectBootTest, LinesThatThreadsWriteAtOnceAreAllInTheLog) {
    const std::string program =
        programWith(R"({"Core": {"CoreLibrary": ["chatter"]}, "User": {"version": 256}})");
    const auto boot = answer({"boot", "--modules", testModules(), "--", program}, "boot");
    const auto lines = boot["log"].GetArray();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const auto& line) { return textAt(line, "/unit") == "chatter"; }),
              8000);
}

TEST_F(InspectBootTest, AnExceptionEndsInTheAnswerAndTheStatus) {
    fs::create_directory(scratch.path("fonts"));
    scratch.write("fonts/cut.shx", "Drafting86 uni");
    const auto boot = answer({"boot", "--sysfonts", "fonts", "--", builtProgram()}, "boot", 1);
    EXPECT_EQ(at(boot, "/result"), "null");
    EXPECT_THAT(textAt(boot, "/error"), HasSubstr("/fonts/cut.shx"));
    const rapidjson::Value* step = entry(boot, "/steps", "name", "main window event");
    ASSERT_TRUE(step);
    EXPECT_EQ(at(*step, "/raised"), "true");
    EXPECT_EQ(textAt(*step, "/steps/0/name"), "font scan");
    EXPECT_NE(entry(boot, "/steps", "name", "services"), nullptr);
}

}  // namespace
