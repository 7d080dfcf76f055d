// What start-up does once the main window is up.
#include <filesystem>

#include "boot_support.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

class ActionsTest : public BootTest {
  protected:
    // A whole run's lines that begin with one of these.
    Lines run(const Config& config, const Lines& arguments,
              std::initializer_list<std::string> beginnings) {
        journal::clear();
        clearLibraryLog();
        configure(config);
        std::filesystem::remove(userFile());
        EXPECT_EQ(boot(arguments), 0);
        shutDown();
        return journalOf(beginnings);
    }

    Lines documents(const Lines& arguments, const Config& config = {}) {
        return run(config, arguments, {"openDocument", "newDocument", "runWizard"});
    }

    Lines script(const Lines& arguments, const std::string& furtherCore = "") {
        return run({.coreLibrary = R"(["stage", "autotest"])", .furtherCore = furtherCore},
                   arguments,
                   {"loadScript", "readRecord", "postInput", "pumpInput", "setRecordFile",
                    "startRecording", "openDocument", "newDocument"});
    }

    static constexpr const char* kNewDrawing = "newDocument \"\" 1";
};

TEST_F(ActionsTest, FirstDrawingIsTheFilesElseTheTemplateElseANewOne) {
    const std::string a = folder.file("a.dwg");
    const std::string b = folder.file("图 b.dwg");
    const std::string openA = "openDocument " + a + " 0 0";
    const std::string openB = "openDocument " + b + " 0 0";
    const std::string missing = folder.path("missing.dwg");
    EXPECT_THAT(documents({}), ElementsAre(kNewDrawing));
    EXPECT_THAT(documents({b, missing, folder.path(), a}), ElementsAre(openB, openA));
    EXPECT_THAT(documents({missing, ""}), ElementsAre(kNewDrawing));
    EXPECT_THAT(documents({"-f", a, b}), ElementsAre(openA));
    EXPECT_THAT(documents({"-f", missing, "-t", "t.dwt"}), ElementsAre(kNewDrawing));
    // A template is opened whether it is there or not, and files come before it.
    EXPECT_THAT(documents({"-t", missing}), ElementsAre("openDocument " + missing + " 0 0"));
    EXPECT_THAT(documents({"-t", "t.dwt", a}), ElementsAre(openA));
    const std::string config = folder.file("other.json", Config{}.text());
    EXPECT_THAT(documents({"-c", config}), ElementsAre("openDocument " + config + " 0 0"));
}

TEST_F(ActionsTest, NewDrawingTakesTheUsersTemplate) {
    const auto withTemplate = [](const std::string& node) {
        return Config{.user = R"({"version": 256, "templatePath": )" + node + "}"};
    };
    EXPECT_THAT(documents({}, withTemplate(R"({"templatePath": "模板.dwt"})")),
                ElementsAre("newDocument \"模板.dwt\" 1"));
    EXPECT_THAT(documents({}, withTemplate(R"({"other": 1})")), ElementsAre(kNewDrawing));
    EXPECT_THAT(documents({}, withTemplate(R"("bare.dwt")")), ElementsAre(kNewDrawing));
}

TEST_F(ActionsTest, WizardRunsBeforeTheDrawingAndNeverInsteadOfIt) {
    Config config{.coreLibrary = R"(["stage", "wizard"])"};
    EXPECT_THAT(documents({}, config), ElementsAre(kNewDrawing));
    config.user = R"({"version": 256, "openWizard": true})";
    EXPECT_THAT(documents({}, config), ElementsAre("runWizard", kNewDrawing));
    EXPECT_THAT(documents({"-t", "t.dwt"}, config),
                ElementsAre("runWizard", "openDocument t.dwt 0 0"));
    EXPECT_THAT(documents({"-f", "missing.dwg"}, config), ElementsAre(kNewDrawing));
    EXPECT_THAT(libraryLog(), IsEmpty());

    config.coreLibrary = R"(["stage"])";
    EXPECT_THAT(documents({}, config), ElementsAre(kNewDrawing));
    EXPECT_THAT(
        libraryLog(),
        ElementsAre("4 vemo_root vemo_root_open_file 没有WIZARD模块,无法启用向导创建功能！"));
}

TEST_F(ActionsTest, ScriptRunsRecordByRecordBeforeTheFirstDrawing) {
    const std::string drawing = folder.file("a.dwg");
    EXPECT_THAT(
        script({"-s", "walk.ast", drawing}, R"(, "autoTest": {"autoRecord": true})"),
        ElementsAre("loadScript walk.ast", "readRecord 0", "postInput 2 2 10 20 6", "pumpInput",
                    "readRecord 1 with node", "readRecord 2 with node", "postInput 2 2 12 22 6",
                    "pumpInput", "openDocument " + drawing + " 0 0"));
    journal::set("records", "0");
    EXPECT_THAT(script({"-s", "walk.ast"}), ElementsAre("loadScript walk.ast", kNewDrawing));
    journal::set("script", "no reader");
    EXPECT_THAT(script({"-s", "walk.ast"}), ElementsAre("loadScript walk.ast", kNewDrawing));
    EXPECT_THAT(libraryLog(), IsEmpty());
}

TEST_F(ActionsTest, ScriptThatCannotRunIsLogged) {
    journal::set("script", "bad");
    EXPECT_THAT(script({"-s", "bad.ast"}), ElementsAre("loadScript bad.ast", kNewDrawing));
    EXPECT_THAT(libraryLog(),
                ElementsAre("5 vemo_root vemo_root_load_script 自动测试文件格式错误！"));
    journal::set("without", "Core/AutoTestSvr");
    EXPECT_THAT(script({"-s", "walk.ast"}), ElementsAre(kNewDrawing));
    EXPECT_THAT(
        libraryLog(),
        ElementsAre("5 vemo_root vemo_root_load_script 未加载自动测试模块，无法自动化测试"));
}

TEST_F(ActionsTest, ScriptWithoutAnInputQueueNamesTheKey) {
    configure({.coreLibrary = R"(["stage", "autotest"])"});
    journal::set("without", "Core/InputQueue");
    try {
        boot({"-s", "walk.ast"});
        ADD_FAILURE() << "the script was played";
    } catch (const OdError& error) {
        EXPECT_THAT(utf8(error.description()), HasSubstr("Core/InputQueue"));
    }
    EXPECT_EQ(shutDown(), 0);
}

TEST_F(ActionsTest, RecordingWhereItIsConfigured) {
    const std::string record = R"(, "autoTest": {"autoRecord": true)";
    EXPECT_THAT(script({}, record + "}"),
                ElementsAre("setRecordFile " + folder.path("bin/autotest.ast"), "startRecording",
                            kNewDrawing));
    EXPECT_THAT(script({}, record + R"(, "autoRecordfile": "/records/today.ast"})"),
                ElementsAre("setRecordFile /records/today.ast", "startRecording", kNewDrawing));
    EXPECT_THAT(script({}, R"(, "autoTest": {"autoRecordfile": "x.ast"})"),
                ElementsAre(kNewDrawing));
    journal::set("without", "Core/AutoTestSvr");
    EXPECT_THAT(script({}, record + "}"), ElementsAre(kNewDrawing));
    EXPECT_THAT(libraryLog(), IsEmpty());
}

TEST_F(ActionsTest, AliasFile) {
    const auto aliases = [this](const Config& config) {
        return run(config, {}, {"setAliasFile", "loadAliases"});
    };
    EXPECT_THAT(aliases({.coreLibrary = R"(["stage", "aliases"])"}),
                ElementsAre("setAliasFile vemo.pgp", "loadAliases"));
    // The key stands on the node that is otherwise a list of modules.
    EXPECT_THAT(
        aliases({.coreLibrary = R"({"Alias": "own.pgp"})", .library = R"(["stage", "aliases"])"}),
        ElementsAre("setAliasFile own.pgp", "loadAliases"));
    EXPECT_THAT(
        aliases({.coreLibrary = R"({"Alias": null})", .library = R"(["stage", "aliases"])"}),
        ElementsAre("setAliasFile vemo.pgp", "loadAliases"));
}

TEST_F(ActionsTest, RemoteDebuggerNeedsBothHalves) {
    const auto attached = [this](const std::string& without) {
        journal::set("without", without);
        return run({.coreLibrary = R"(["stage", "remotedebug"])"}, {}, {"attachStub"});
    };
    EXPECT_THAT(attached(""), ElementsAre("attachStub"));
    EXPECT_THAT(attached("Core/RemoteDebugSvr"), IsEmpty());
    EXPECT_THAT(attached("Core/RemoteDebugStub"), IsEmpty());
}

TEST_F(ActionsTest, InsertUnitsFollowTheMeasurementOfNewDrawings) {
    const auto unitsFor = [this](const std::string& measureinit) {
        journal::set("measureinit", measureinit);
        return run({}, {}, {"setSysVar"});
    };
    EXPECT_THAT(unitsFor("0"), ElementsAre("setSysVar INSUNITSDEFSOURCE 1 0 0",
                                           "setSysVar INSUNITSDEFTARGET 1 0 0"));
    for (const char* metric : {"1", "-1"}) {
        EXPECT_THAT(unitsFor(metric), ElementsAre("setSysVar INSUNITSDEFSOURCE 4 0 0",
                                                  "setSysVar INSUNITSDEFTARGET 4 0 0"));
    }
}

}  // namespace
