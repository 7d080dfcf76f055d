// The order of start-up and shut-down, and what is left when start-up stops half-way.
#include <global/importedclasses.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "boot_support.h"
#include "core/vofibersvr.h"
#include "core/vomoduleservices.h"
#include "core/vosicoroutine.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr const char* kCheckFile = "/var/tmp/vemo.check";

// Tests that run beside this one rewrite the file, so it may be caught empty.
std::string checkFileContent() {
    std::string content = contentOf(kCheckFile);
    for (int tries = 0; content.empty() && tries < 100; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        content = contentOf(kCheckFile);
    }
    return content;
}

bool isRuntimeGone() {
    return odrxSysRegistry().isNull() && !odrxSystemServices() && !vodbSystemServices() &&
           OdRxDictionary::desc() == nullptr && !vosi::core_ui_dlg_is_initialized();
}

class OrderTest : public BootTest {
  protected:
    // Every service that switches a step on is there, and a reactor from the earliest moment on.
    void stageEverything() {
        configure({.odaLibrary = R"(["runtime.tx"])",
                   .coreLibrary = R"(["stage", "aliases", "autotest", "remotedebug"])",
                   .library = R"(["alpha", "leftservice"])",
                   .user = R"({"version": 256, "Library": ["libbeta.so"]})"});
        program.onInitialize = [] {
            const auto reactor = JournalReactor::create("reactor");
            dispatcher()->addReactor(reactor.get());
        };
        journal::set("records", "1");
    }
};

const char* const kStartUp[] = {
    "pool set [quitting]",
    "query AppDataPath",
    "query AppDataPath",
    "query DocumentPath",
    "query TempPath",
    "query TempPath",
    "query SysFontPath",
    "initialize",
    "reactor hears sysConfigLoaded",
    "reactor hears userConfigLoaded",
    "init runtime.tx",
    "init libstage.so",
    "init libaliases.so",
    "init libautotest.so",
    "init libremotedebug.so",
    "init libalpha.so",
    "init libleftservice.so",
    "showMainWindow",
    "startUp",
    "reactor hears mainWindowReady",
    "setAliasFile vemo.pgp",
    "loadAliases",
    "init libbeta.so",
    "reactor hears appStarted",
    "loadScript walk.ast",
    "readRecord 0",
    "postInput 2 2 10 20 6",
    "pumpInput",
    "attachStub",
    "openDocument plan.dwg 0 0",
    "getSysVar MEASUREINIT",
    "setSysVar INSUNITSDEFSOURCE 1 0 0",
    "setSysVar INSUNITSDEFTARGET 1 0 0",
};

const char* const kShutDown[] = {
    "reactor hears appExiting [quitting]", "shutDown [quitting]",
    "end libbeta.so [quitting]",           "end libleftservice.so [quitting]",
    "end libalpha.so [quitting]",          "uninitialize [quitting]",
    "end libremotedebug.so [quitting]",    "end libautotest.so [quitting]",
    "end libaliases.so [quitting]",        "end libstage.so [quitting]",
    "end runtime.tx [quitting]",           "left service released, runtime gone [quitting]",
    "reactor released [quitting]",
};

TEST_F(OrderTest, WholeRunStepByStep) {
    stageEverything();
    std::filesystem::current_path(folder.path());
    folder.file("plan.dwg");
    EXPECT_TRUE(vo_is_appQuiting());
    ASSERT_EQ(boot({"plan.dwg", "-s", "walk.ast"}), 0);
    EXPECT_THAT(journal::lines(), ElementsAreArray(kStartUp));
    EXPECT_FALSE(vo_is_appQuiting());

    journal::clear();
    EXPECT_EQ(shutDown(), 0);
    EXPECT_THAT(journal::lines(), ElementsAreArray(kShutDown));
    EXPECT_TRUE(vo_is_appQuiting());
    EXPECT_TRUE(isRuntimeGone());
    EXPECT_THAT(libraryLog(), IsEmpty());
}

TEST_F(OrderTest, WhatStandsAtTheMainProgramsTwoMoments) {
    configure({.library = R"(["alpha"])", .furtherCore = R"(, "seen": true)"});
    program.onInitialize = [this] {
        EXPECT_FALSE(vo_arbitDict_getservice(vosi::kFiberKey).isNull());
        EXPECT_FALSE(vo_arbitDict_getservice(vosi::kFiberCoroutineKey).isNull());
        EXPECT_FALSE(vo_arbitDict_getservice(vosi::kFindFontsKey).isNull());
        EXPECT_TRUE(vosi::core_ui_dlg_is_initialized());
        EXPECT_NE(vosi::HdiRxModule::desc(), nullptr);
        EXPECT_EQ(json(vo_sys_config("Core")), R"({"Library":[]})");
        EXPECT_EQ(contentOf(userFile()), R"({"version":1})");
        EXPECT_TRUE(odrxDynamicLinker()->loadedModules().isEmpty());
    };
    program.onUninitialize = [] {
        EXPECT_TRUE(odrxDynamicLinker()->loadedModule("libalpha.so").isNull());
        EXPECT_FALSE(odrxDynamicLinker()->loadedModule("libstage.so").isNull());
        EXPECT_FALSE(odrxSysRegistry()->has(ODDB_SYSVARDICT));
        EXPECT_TRUE(odrxSysRegistry()->has(vosi::kRxEventKey));
        EXPECT_FALSE(vo_arbitDict_getservice(vosi::kFindFontsKey).isNull());
        EXPECT_EQ(json(vo_sys_config("Core/seen")), "true");
    };
    ASSERT_EQ(boot(), 0);
    EXPECT_THAT(journalOf({"initialize"}), ElementsAre("initialize"));
    shutDown();
    EXPECT_THAT(journalOf({"uninitialize"}), ElementsAre("uninitialize [quitting]"));
}

constexpr const char* kEverything =
    " dispatcher trees Core/Fiber Core/FiberCoroutine Core/FindFonts dialogs classes any class";

TEST_F(OrderTest, WhatStandsForModulesOfTheFirstWave) {
    configure({.coreLibrary = R"(["witness"])"});
    EXPECT_EQ(boot(), kVemoNoMainWindow);
    shutDown();
    // The runtime ends these modules when the library has taken down all but its dictionary.
    EXPECT_THAT(journalOf({"libwitness"}),
                ElementsAre(std::string("libwitness.so begins:") + kEverything,
                            "libwitness.so ends: [quitting]"));
}

TEST_F(OrderTest, RuntimesOwnModuleComesBehindTheServicesAndGoesBeforeThem) {
    program.onFirstQuery = [] {
        const std::string self = std::filesystem::read_symlink("/proc/self/exe").parent_path();
        odrxDynamicLinker()->addModuleFolder(OdUtf8StringToOdString(self + "/modules/drawing"));
    };
    ASSERT_EQ(boot(), 0);
    shutDown();
    EXPECT_THAT(
        journalOf({"libRecompute", "init", "end", "uninit"}),
        ElementsAre(std::string("libRecomputeDimBlock.so begins:") + kEverything, "initialize",
                    "init libstage.so", "uninitialize [quitting]",
                    std::string("libRecomputeDimBlock.so ends:") + kEverything + " [quitting]",
                    "end libstage.so [quitting]"));
}

// Looks at the fiber world from inside showMainWindow.
class FiberWindow : public vosi::VosiMainUISvr {
  public:
    std::int32_t showMainWindow() override {
        VoFiberHandle root = fibers()->currentFiber();
        note(root && !fibers()->isOffCurrentFiber() && !fibers()->fiberData(root)
                 ? "window runs on the root fiber"
                 : "window runs on no fiber");
        // The first to ask the manager anything: on a fiber that the manager doesn't know.
        VoFiberHandle other = fibers()->createFiber(
            0,
            [](void* data) {
                note(coroutines()->currentCoroutine() ? "main coroutine was made late"
                                                      : "main coroutine was there");
                fibers()->switchToFiber(static_cast<VoFiberHandle>(data));
            },
            root);
        fibers()->switchToFiber(other);
        fibers()->deleteFiber(other);
        note(coroutines()->isMainCoroutine() ? "window runs as the main coroutine" : "it doesn't");
        return 5;
    }

  private:
    static VoFiberSvrPtr fibers() { return vo_arbitDict_getservice(vosi::kFiberKey); }
    static vosi::VosiCoroutineManagerSvrPtr coroutines() {
        return vo_arbitDict_getservice(vosi::kFiberCoroutineKey);
    }
};

TEST_F(OrderTest, MainWindowRunsOnTheRootFiberAsTheMainCoroutine) {
    journal::set("without", "Vemo/MainUI");
    program.onInitialize = [] {
        vo_arbitDict_regservice(vosi::kMainUIKey, OdRxObjectImpl<FiberWindow>::createObject());
    };
    EXPECT_EQ(boot(), 5);
    EXPECT_THAT(journalOf({"window", "main", "it"}),
                ElementsAre("window runs on the root fiber", "main coroutine was there",
                            "window runs as the main coroutine"));
}

TEST_F(OrderTest, RuntimesTraceAndGeometryErrorsGoNowhere) {
    odSetTraceFunc([](const wchar_t*) { note("traced"); });
    bootBare();
    odTrace(L"message\n");
    odTrace(L"");
    EXPECT_THAT(journalOf({"traced"}), IsEmpty());
    EXPECT_NO_THROW(OdGeContext::gErrorFunc(eInvalidInput));
    shutDown();
    EXPECT_NO_THROW(OdGeContext::gErrorFunc(eInvalidInput));
}

TEST_F(OrderTest, WithoutMainWindowEverythingElseIsUpAndGoesDown) {
    configure({.library = R"(["alpha"])"});
    journal::set("without", "Vemo/MainUI");
    std::ofstream(kCheckFile) << "left by another run, and longer than what is written";
    ASSERT_EQ(boot(), kVemoNoMainWindow);
    EXPECT_EQ(checkFileContent(), "init done!");
    EXPECT_FALSE(vo_is_appQuiting());
    EXPECT_THAT(journalOf({"init lib", "show", "startUp", "newDocument"}),
                ElementsAre("init libstage.so", "init libalpha.so"));
    EXPECT_THAT(libraryLog(), IsEmpty());

    vo_user_config("kept", kElementObject);
    journal::clear();
    EXPECT_EQ(shutDown(), 0);
    EXPECT_THAT(journal::lines(),
                ElementsAre("shutDown [quitting]", "end libalpha.so [quitting]",
                            "uninitialize [quitting]", "end libstage.so [quitting]"));
    EXPECT_EQ(jsonOfFile(userFile()), R"({"version":256,"kept":{}})");
}

TEST_F(OrderTest, MainWindowsFailureIsPassedThrough) {
    stageEverything();
    journal::set("window.result", "-7");
    EXPECT_EQ(boot({"-s", "walk.ast"}), -7);
    EXPECT_EQ(journal::lines().back(), "showMainWindow");
    EXPECT_FALSE(vo_is_appQuiting());
    EXPECT_THAT(libraryLog(), ElementsAre("5 vemo_root vemo_root 显示主窗体失败!-7"));
    EXPECT_EQ(shutDown(), 0);
    EXPECT_TRUE(isRuntimeGone());
}

TEST_F(OrderTest, RequiredServiceThatIsMissingIsNamedAndCleanedUpAfter) {
    for (const std::string key : {"Core/DocMgr", "Core/EditSystemServer"}) {
        SCOPED_TRACE(key);
        journal::set("without", key);
        try {
            boot();
            ADD_FAILURE() << "start-up went on";
        } catch (const OdError& error) {
            EXPECT_EQ(error.code(), eKeyNotFound);
            EXPECT_THAT(utf8(error.description()), HasSubstr(key));
        }
        EXPECT_EQ(shutDown(), 0);
        EXPECT_TRUE(isRuntimeGone());
    }
}

TEST_F(OrderTest, RaisingModuleOfTheFirstWaveReachesTheMainProgram) {
    configure({.library = R"(["alpha", "raiser", "beta"])"});
    EXPECT_THROW(boot(), OdError);
    journal::clear();
    EXPECT_EQ(shutDown(), 0);
    EXPECT_THAT(journal::lines(),
                ElementsAre("shutDown [quitting]", "end libalpha.so [quitting]",
                            "uninitialize [quitting]", "end libstage.so [quitting]"));
    EXPECT_TRUE(isRuntimeGone());
}

TEST_F(OrderTest, NullCallbackAtTheEnd) {
    ASSERT_EQ(boot(), 0);
    vo_user_config("kept", kElementObject);
    EXPECT_EQ(vemo_exit(nullptr), 0);
    EXPECT_THAT(journalOf({"uninitialize"}), IsEmpty());
    EXPECT_EQ(jsonOfFile(userFile()), R"({"version":256,"templatePath":{},"kept":{}})");
    // Once more is the caller's fault, and named as such.
    EXPECT_THROW(shutDown(), OdError);
}

TEST_F(OrderTest, SecondRunInTheProcessStartsAfresh) {
    configure({.library = R"(["alpha"])"});
    ASSERT_EQ(boot({"-s", "first.ast", "-t", "first.dwt", "--", "-d"}), 0);
    const auto* const object = vodbSystemServices();
    EXPECT_EQ(json(vo_runtime_config("ExeOption")),
              R"({"script":"first.ast","template":"first.dwt","file":["-d"]})");
    EXPECT_EQ(shutDown(), 0);

    journal::clear();
    clearLibraryLog();
    ASSERT_EQ(boot({"-t", "second.dwt"}), 0);
    EXPECT_EQ(vodbSystemServices(), object);
    EXPECT_EQ(json(vo_runtime_config("ExeOption")), R"({"template":"second.dwt"})");
    EXPECT_EQ(json(vo_runtime_config("loadedModules/fixExtLibray")), R"(["libalpha.so"])");
    EXPECT_FALSE(vo_is_appQuiting());
    // The object is the same one, so its state says so until the command line is read.
    EXPECT_EQ(journal::lines()[1], "query AppDataPath [quitting]");
    EXPECT_THAT(journalOf({"init lib"}), ElementsAre("init libstage.so", "init libalpha.so"));
    EXPECT_THAT(libraryLog(), IsEmpty());
    EXPECT_EQ(shutDown(), 0);
    EXPECT_TRUE(isRuntimeGone());
}

}  // namespace
