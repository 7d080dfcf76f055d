// Interfaces that are called by position: a module that was built apart from the library's headers
// provides some and calls the others, in a running application.
#include <dlfcn.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "boot_support.h"
#include "support/sfntbuilder.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class SlotsTest : public BootTest {
  protected:
    SlotsTest() {
        const std::filesystem::path file = folder.file("support/Dashes.lin", "dash\n");
        last_write_time(file, std::chrono::file_clock::from_sys(
                                  std::chrono::sys_seconds(std::chrono::seconds(1000))));
        journal::set("folder", folder.path());
        configureModule();
    }

    void configureModule(const std::string& furtherCore = "") {
        configure({.coreLibrary = "[]",
                   .library = R"(["slotmodule"])",
                   .user = R"({"version": 256, "openWizard": true})",
                   .furtherCore = furtherCore,
                   .further = R"(, "Nothing": null)"});
    }

    // Starts the application and calls one of the module's checks in it.
    void check(const char* name) {
        ASSERT_EQ(boot(), 0);
        void* module = dlopen(VEMO_SLOT_MODULE, RTLD_NOW | RTLD_NOLOAD);
        ASSERT_NE(module, nullptr) << dlerror();
        const auto function = reinterpret_cast<void (*)()>(dlsym(module, name));
        ASSERT_NE(function, nullptr) << dlerror();
        function();
        dlclose(module);
        EXPECT_EQ(shutDown(), 0);
    }

    // All that the library calls in the module from its loading on.
    std::vector<std::string> callsOfRun(const std::vector<std::string>& arguments) {
        program.onInitialize = [] { journal::clear(); };
        EXPECT_EQ(boot(arguments), 0);
        EXPECT_EQ(shutDown(), 0);
        return journal::lines();
    }
};

// ---- the library calls the module ----

const char* const kScriptRun[] = {
    "MainUI 1",
    "DocMgr 6",
    "AliasMgr 1 slot.pgp",
    "AliasMgr 2",
    "AutoTest 3 walk.ast",
    "AutoTest 4",
    "Reader 1",
    "Reader 3",
    "Reader 4 cleared",
    "InputQueue 1 2 2 kind 6 whole",
    "DocMgr 2",
    "Reader 2",
    "Reader 3",
    "Reader 4 cleared",
    "Reader 2",
    "Reader 3",
    "RemoteDebugStub 1",
    "RemoteDebugSvr 1 the stub",
    "OpenWizard 1",
    "DocMgr 4 '' true",
    "EditSystem 2 MEASUREINIT zeroed",
    "EditSystem 1 INSUNITSDEFSOURCE 4 0 0",
    "EditSystem 1 INSUNITSDEFTARGET 4 0 0",
    "DocMgr 7",
    "uninitialize [quitting]",
};

TEST_F(SlotsTest, ARunWithAScriptCallsEachServiceAtItsPositions) {
    EXPECT_THAT(callsOfRun({"-s", "walk.ast"}), ElementsAreArray(kScriptRun));
}

TEST_F(SlotsTest, RecordingAndOpeningCallTheirPositions) {
    configureModule(R"(, "autoTest": {"autoRecord": true, "autoRecordfile": "taken.ast"})");
    const std::string drawing = folder.file("plan.dwg");
    EXPECT_THAT(
        callsOfRun({"-f", drawing}),
        ElementsAre("MainUI 1", "DocMgr 6", "AliasMgr 1 slot.pgp", "AliasMgr 2",
                    "AutoTest 1 taken.ast", "AutoTest 2", "RemoteDebugStub 1",
                    "RemoteDebugSvr 1 the stub", "DocMgr 5 " + drawing + " 0 0",
                    "EditSystem 2 MEASUREINIT zeroed", "EditSystem 1 INSUNITSDEFSOURCE 4 0 0",
                    "EditSystem 1 INSUNITSDEFTARGET 4 0 0", "DocMgr 7", "uninitialize [quitting]"));
}

TEST_F(SlotsTest, AFileOfADatabaseIsLookedForInItsDocument) {
    check("checkDocumentSlots");
}

TEST_F(SlotsTest, TheHostCallsAFontServiceThatTookTheKey) {
    check("checkProvidedFindFont");
}

TEST_F(SlotsTest, ATreeReadsAndWritesANodeOfAModule) {
    check("checkProvidedNode");
}

// ---- the module calls the library ----

TEST_F(SlotsTest, ObjectsBeginWithTheTenOperations) {
    check("checkObjectSlots");
}

TEST_F(SlotsTest, Fibers) {
    check("checkFiberSlots");
}

TEST_F(SlotsTest, ConversionAndTearDownOfFibers) {
    check("checkFiberWorldSlots");
}

TEST_F(SlotsTest, CoroutineManager) {
    check("checkCoroutineManagerSlots");
}

TEST_F(SlotsTest, CoroutineHasNoDestructorEntriesInFront) {
    check("checkCoroutineSlots");
}

TEST_F(SlotsTest, CoroutineDestructorEntriesStandBehind) {
    check("checkCoroutineDestructorSlots");
}

TEST_F(SlotsTest, EventsAndReactors) {
    check("checkEventSlots");
}

TEST_F(SlotsTest, FindFonts) {
    check("checkFindFontSlots");
}

TEST_F(SlotsTest, FontScansAndDescriptions) {
    folder.file("share/fonts/txt.shx", fontfile::shx("Drafting86 unifont 1.0"));
    check("checkFontScanSlots");
    check("checkFontMatchSlots");
    check("checkFontPropertySlots");
}

TEST_F(SlotsTest, TreeNodeSettersByKey) {
    check("checkNodeSettersByKey");
}

TEST_F(SlotsTest, TreeNodeOwnValue) {
    check("checkNodeOwnValue");
}

TEST_F(SlotsTest, TreeNodeDefaults) {
    check("checkNodeDefaults");
}

TEST_F(SlotsTest, TreeNodeArrays) {
    check("checkArrayNode");
}

TEST_F(SlotsTest, TreeNodeObjects) {
    check("checkObjectNode");
}

TEST_F(SlotsTest, TreeNodeCounting) {
    check("checkNodeCounting");
}

TEST_F(SlotsTest, SystemServices) {
    check("checkSystemServiceSlots");
}

TEST_F(SlotsTest, SystemServicesGainTheHostsOverridesBehindTheInheritedOnes) {
    check("checkAppendedSystemSlots");
}

TEST_F(SlotsTest, HostServices) {
    folder.folder("share/fonts");
    for (const char* name : {"HOME", "XDG_DATA_DIRS"}) {
        setenv(name, folder.path("nowhere").c_str(), 1);
    }
    setenv("XDG_DATA_HOME", folder.path("share").c_str(), 1);
    setenv("TMPDIR", folder.path("temp").c_str(), 1);
    check("checkHostServiceSlots");
}

}  // namespace
