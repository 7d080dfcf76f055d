// Whole runs of vemocad: what each kind of command line, configuration and input ends in.
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "vemocadrun.h"

namespace vemoapp {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string sample(const std::string& name) {
    return (VemocadRun::builtApplication() / "drawings" / name).string();
}

// A system configuration with the given lists, in JSON.
std::string configWith(const std::string& coreLibrary, const std::string& library,
                       const std::string& moreOfCore = "") {
    return R"({"Core": {"CoreLibrary": [)" + coreLibrary + R"(], "Library": [)" + library + "]" +
           moreOfCore + R"(}, "User": {"version": 256}})";
}

const char* const kCoreModules = R"("mainui", "docmgr", "editsystem")";

std::size_t linesOf(const std::string& text, const std::string& beginning) {
    std::size_t count = text.starts_with(beginning) ? 1 : 0;
    for (std::size_t at = text.find('\n' + beginning); at != std::string::npos;
         at = text.find('\n' + beginning, at + 1)) {
        ++count;
    }
    return count;
}

TEST(Vemocad, HelpEndsWithTheUsageTextAndTouchesNothing) {
    VemocadRun vemocad;
    RunResult result = vemocad.run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.starts_with("欢迎使用 VemoCAD 2021. \n")) << result.output;
    EXPECT_THAT(result.output, HasSubstr("--userconfig=用户配置文件"));
    EXPECT_FALSE(fs::exists(vemocad.path("config/vemocad/user.json")));
}

TEST(Vemocad, OpensTheDrawingsOfTheCommandLineAndSavesTheUserFile) {
    VemocadRun vemocad;
    RunResult result = vemocad.run({sample("floorplan.dxf"), sample("site.dxf")}, "STATUS\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, IsEmpty());
    EXPECT_THAT(result.output, HasSubstr("Opened " + sample("floorplan.dxf")));
    EXPECT_THAT(result.output, HasSubstr("NOTES: romans.shx; HAN: txt.shx with big font "
                                         "hztxt.shx; CAPTION: LIBERATIONSERIF-ITALIC.TTF; ROOMS: "
                                         "DejaVu Sans (TrueType"));
    EXPECT_THAT(result.output, HasSubstr("* " + sample("site.dxf")));
    EXPECT_THAT(result.output, HasSubstr("Closed 2 drawings."));
    EXPECT_THAT(vemocad.read("config/vemocad/user.json"), HasSubstr("\"version\": 256"));
}

TEST(Vemocad, ShowsNamesOutOfADrawingsCodePage) {
    VemocadRun vemocad;
    EXPECT_THAT(vemocad.run({sample("site.dxf")}).output, HasSubstr("道路 (2)"));
}

TEST(Vemocad, ShowsTheStagesOfARunInTheirOrder) {
    VemocadRun vemocad;
    std::string output = vemocad.run({}, "QUIT\n").output;
    std::size_t last = 0;
    for (const char* stage : {"configuration ", "user settings ", "main window ", "User module",
                              "started ", "New drawing", "> QUIT", "ending ", "Closed 1"}) {
        std::size_t found = output.find(stage, last);
        ASSERT_NE(found, std::string::npos) << stage << " in " << output;
        last = found;
    }
    EXPECT_THAT(output, HasSubstr("0 missing"));
}

TEST(Vemocad, AMissingFileEndsInANewDrawingFromTheTemplate) {
    VemocadRun vemocad;
    RunResult result = vemocad.run({"-f", "missing.dxf"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, ContainsRegex("New drawing Drawing1, template /.*/vemoiso.dwt"));
    EXPECT_THAT(result.output, Not(HasSubstr("Can't")));
    EXPECT_THAT(result.output, Not(HasSubstr("missing.dxf")));
}

TEST(Vemocad, AFileThatIsNoDrawingIsReportedAndTheRestGoesOn) {
    VemocadRun vemocad;
    vemocad.write("notes.txt", "Dear diary\n");
    vemocad.write("cut.dxf", "0\nSECTION\n2\nENTITIES\n0\nLINE\n");
    vemocad.write("binary.dxf", std::string("\0\1\2\3", 4));
    RunResult result = vemocad.run({"notes.txt", "cut.dxf", "binary.dxf", sample("bracket.dxf")},
                                   "OPEN " + vemocad.path("home") + "\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("Can't open notes.txt: line 1: a group code is expected"));
    EXPECT_THAT(result.output, HasSubstr("Can't open cut.dxf: line 6: the file ends before"));
    EXPECT_THAT(result.output, HasSubstr("Can't open binary.dxf: line 1: binary data"));
    EXPECT_THAT(result.output, HasSubstr("Can't open " + vemocad.path("home") + ": "));
    EXPECT_THAT(result.output, HasSubstr("Closed 1 drawing."));
}

TEST(Vemocad, AScriptRunsBeforeTheFirstDrawingOpens) {
    VemocadRun vemocad;
    std::string script = vemocad.write("test.scr", "VEMO-SCRIPT 1\nSETVAR MEASUREINIT 0\nOPEN \"" +
                                                       sample("bracket.dxf") + "\"\n");
    std::string output = vemocad.run({"-s", script, sample("site.dxf")}, "SETVAR\n").output;
    EXPECT_LT(output.find("> SETVAR MEASUREINIT 0"),
              output.find("Opened " + sample("bracket.dxf")));
    EXPECT_LT(output.find("Opened " + sample("bracket.dxf")),
              output.find("Opened " + sample("site.dxf")));
    EXPECT_THAT(output, HasSubstr("INSUNITSDEFSOURCE = 1"));
}

TEST(Vemocad, ABadScriptIsLoggedAndTheRestGoesOn) {
    VemocadRun vemocad;
    vemocad.write("bad.scr", "OPEN a.dxf\n");
    for (const char* script : {"bad.scr", "missing.scr"}) {
        RunResult result = vemocad.run({"-s", script});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.errors, HasSubstr("自动测试文件格式错误！"));
        EXPECT_THAT(result.output, HasSubstr("New drawing Drawing1"));
    }
}

TEST(Vemocad, WhatIsRecordedCanBePlayedBack) {
    VemocadRun vemocad;
    std::string recording = vemocad.path("record.scr");
    std::string config = vemocad.write(
        "record.json", configWith(kCoreModules, R"("aliasmgr", "autotest")",
                                  R"(, "autoTest": {"autoRecord": true, "autoRecordfile": ")" +
                                      recording + "\"}"));
    vemocad.run({"-c", config}, "SETVAR MEASUREINIT\n\nst\n");
    EXPECT_EQ(vemocad.read("record.scr"), "VEMO-SCRIPT 1\nSETVAR MEASUREINIT\nst\n");
    std::string output = vemocad.run({"-s", recording}).output;
    EXPECT_THAT(output, HasSubstr("> SETVAR MEASUREINIT\n  MEASUREINIT = 1\n> st\n"));
}

TEST(Vemocad, OtherConfigurationFilesTakeTheShippedOnesPlace) {
    VemocadRun vemocad;
    std::string config = vemocad.write("other.json", configWith(kCoreModules, ""));
    RunResult result = vemocad.run({"-c", config, "-u", "mine.json"}, "CONFIG\nMODULES\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("system configuration: " + config));
    EXPECT_THAT(result.output, HasSubstr("user configuration: mine.json"));
    EXPECT_THAT(result.output, Not(HasSubstr("libaliasmgr.so")));
    // The option names a template too, and no drawing follows a template.
    EXPECT_THAT(result.output, HasSubstr("Can't open " + config + ": line 1"));
    EXPECT_THAT(result.output, HasSubstr("Closed 0 drawings."));
    EXPECT_THAT(vemocad.read("mine.json"), HasSubstr("256"));
    EXPECT_FALSE(fs::exists(vemocad.path("config/vemocad/user.json")));
}

TEST(Vemocad, AFailedStartSaysInOneLineWhatIsMissing) {
    struct Case {
        std::string config;
        const char* expected;
    };
    const Case cases[] = {
        {"{ broken", "\"Vemo/MainUI\".*the system configuration is missing, damaged or names no"},
        {configWith("\"nosuch\"", ""), "\"Vemo/MainUI\".*libnosuch\\.so not loaded: cannot open"},
        {configWith("\"docmgr\"", ""), "\"Vemo/MainUI\".*none of the loaded modules registers it"},
        {configWith("\"mainui\", \"editsystem\"", ""), "Core/DocMgr"},
        {configWith("\"mainui\", \"docmgr\"", ""), "Core/EditSystemServer"},
    };
    VemocadRun vemocad;
    vemocad.copyApplication();
    for (const Case& failure : cases) {
        vemocad.write("bin/vemo.json", failure.config);
        RunResult result = vemocad.run({});
        EXPECT_EQ(result.status, 1) << failure.config;
        EXPECT_THAT(result.errors, ContainsRegex(std::string("vemocad: .*") + failure.expected));
        EXPECT_EQ(linesOf(result.errors, "vemocad: "), 1U) << result.errors;
    }
    EXPECT_TRUE(fs::exists(vemocad.path("config/vemocad/user.json")));
}

TEST(Vemocad, RunsWithoutAPlaceForTheUsersSettings) {
    VemocadRun vemocad;
    for (const std::string& place : {vemocad.write("file", "in the way"), std::string("/proc/1")}) {
        vemocad.setConfigHome(place);
        RunResult result = vemocad.run({sample("bracket.dxf")});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.output, HasSubstr("Closed 1 drawing."));
        EXPECT_THAT(result.errors, AllOf(HasSubstr("vemocad/user.json文件失败！"),
                                         HasSubstr("写入用户配置文件失败")));
    }
    EXPECT_EQ(vemocad.read("file"), "in the way");
}

TEST(Vemocad, CommandsAnswerWhateverIsTyped) {
    VemocadRun vemocad;
    std::string plan = vemocad.write("Plan.dxf", "0\nEOF\n");
    RunResult result =
        vemocad.run({},
                    "nonsense\nfind PLAN.DXF\nf nothing.dxf pattern\n"
                    "FIND x sideways\nconfig Core/CoreLibrary\nCONFIG no/key\n"
                    "services\nSETVAR NOSUCH\nSETVAR MEASUREINIT big\nabout\n" +
                        std::string(9000, 'x') + "\nOPEN \x1b[2J.dxf\nst\nQ\n" + "HELP\n");
    EXPECT_EQ(result.status, 0);
    for (const std::string& answer :
         {std::string("Unknown command \"nonsense\""), "\n" + plan + " (the working folder)\n",
          std::string("nothing.dxf is not found"), std::string("hints are DEFAULT, FONT"),
          std::string(R"(["mainui","docmgr","editsystem"])"),
          std::string("no/key is not in the configuration"), std::string("there    Core/FindFonts"),
          std::string("absent   Core/OpenWizard"), std::string("SETVAR: "),
          std::string("\"big\" is no 16-bit integer"), std::string(", built 20"),
          std::string("That line is too long."), std::string("* Drawing1, 0 entities")}) {
        EXPECT_THAT(result.output, HasSubstr(answer));
    }
    EXPECT_THAT(result.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(result.output, Not(HasSubstr("> HELP")));
}

TEST(Vemocad, AUsersModuleThatIsMissingIsListedWithItsReason) {
    VemocadRun vemocad;
    vemocad.write("config/vemocad/user.json",
                  R"({"version": 256, "Library": ["libusermodule.so", "libnothere.so"]})");
    RunResult result = vemocad.run({}, "MODULES\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("loaded   libusermodule.so"));
    EXPECT_THAT(result.output, ContainsRegex("missing  libnothere.so .User/Library.: cannot open"));
}

}  // namespace
}  // namespace vemoapp
