// What the boot tests share: an installation of the application in a folder of its own, the main
// program's part of a run, and records of what happened.
//
// Happenings go to the journal, one line each. Lines of the log are recorded with all that their
// writer gave, on their way to the real log.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utils/elementvalue.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/vemo_root.h"
#include "core/voexports.h"
#include "core/voservicekeys.h"
#include "core/vosiaprxevent.h"
#include "support/testfolder.h"
#include "testmodule.h"

/// "vemo.json" as most tests want it; every member is JSON text.
struct Config {
    std::string odaLibrary = "[]";
    std::string coreLibrary = R"(["stage"])";
    std::string library = "[]";
    std::string user = R"({"version": 256})";
    /// Further members of Core and of the root, each with a comma in front.
    std::string furtherCore = {};
    std::string further = {};

    std::string text() const;
};

/// The main program's callback: journals what it is asked for, names the test modules' folder to
/// the linker, and adds what a test wants to see at its two moments.
class MainProgram : public VoMainAppCallback {
  public:
    explicit MainProgram(const TestFolder& testFolder) : folder(testFolder) {}

    void initialize() override;
    void uninitialize() override;
    OdAnsiString queryAppDataPath() override { return answer("AppDataPath", "data"); }
    OdAnsiString querySysFontPath() override { return answer("SysFontPath", "fonts"); }
    OdAnsiString queryTempPath() override { return answer("TempPath", "temp"); }
    OdAnsiString queryDocumentPath() override { return answer("DocumentPath", "documents"); }

    /// Runs when the first path is asked for: the drawing runtime is up, and nothing else.
    std::function<void()> onFirstQuery = [] {};
    std::function<void()> onInitialize = [] {};
    std::function<void()> onUninitialize = [] {};

  private:
    OdAnsiString answer(const std::string& what, const std::string& subfolder);

    bool asked = false;

    const TestFolder& folder;
};

class BootTest : public testing::Test {
  protected:
    BootTest();
    /// Takes the application down where the test left it up.
    ~BootTest() override;

    void configure(const Config& config) { folder.file("bin/vemo.json", config.text()); }
    /// vemo_root with these arguments behind the program's name.
    int boot(const std::vector<std::string>& arguments = {});
    int shutDown();
    /// Lets vemo_root end the process, which otherwise counts as a failure.
    static void expectExit();
    /// A run without modules, which ends before the main window: the quickest that has everything
    /// but modules.
    void bootBare(const std::vector<std::string>& arguments = {});

    std::string userFile() const { return folder.path("data/user.json"); }

    TestFolder folder;
    MainProgram program{folder};

  private:
    bool up = false;
};

/// A reactor that journals the events it hears, and its own end.
class JournalReactor : public vosi::VosiApRxEventReactor {
  public:
    ~JournalReactor() override { note(name + " released"); }

    void onMainWindowReady() override { hear("mainWindowReady"); }
    void onAppStarted() override { hear("appStarted"); }
    void onAppExiting() override { hear("appExiting"); }
    void onSysConfigLoaded() override { hear("sysConfigLoaded"); }
    void onUserConfigLoaded() override { hear("userConfigLoaded"); }

    static OdSmartPtr<JournalReactor> create(const std::string& name);

    std::string name = "reactor";
    /// Runs in the handler, behind the line in the journal.
    std::function<void()> then = [] {};

  private:
    void hear(const std::string& event);
};

/// The dispatcher in the system registry.
vosi::VosiApRxEventPtr dispatcher();

/// The journal's lines that begin with one of these.
std::vector<std::string> journalOf(std::initializer_list<std::string> beginnings);

/// What the library logged: "LEVEL UNIT FUNCTION TEXT", units without their common folder.
std::vector<std::string> libraryLog();
void clearLibraryLog();

/// Compact JSON of the node, "null pointer" where there is none.
std::string json(const VoJsonPtr& node);
/// The same of a file's tree.
std::string jsonOfFile(const std::string& path);

/// An array node of these texts.
VoJsonPtr textArray(std::initializer_list<std::string> texts);
