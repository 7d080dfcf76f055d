// The application service object: the one object through which the drawing runtime reaches the
// application, as its system services and as its host application services, and the owner of the
// configuration, the service dictionary and the list of extension modules.
//
// There is one in a process, of type OdStaticRxObject<VoAppService>: references don't govern its
// life. It is used on the interface thread, or on a fiber that holds the baton; only isQuitting may
// be asked on any thread.
//
// One purpose of it stands in a file each: life cycle here in voappservice.cpp, and beside it
// _commandline, _config, _extmodules, _hostfiles, _hostdialogs and _messages.
#pragma once

#include <cstdint>

#include <drawing/runtime.h>
#include <utils/vojson.h>

#include "core/vomainappcallback.h"
#include "outdateduserfile.h"

/// Where the application stands in its life; written by vemo_root and vemo_exit alone.
enum AppState : std::int32_t {
    APP_STATE_CREATED = 0,            // built, command line not yet read
    APP_STATE_COMMAND_LINE_READ = 1,  // the Runtime branch is there; start-up under way
    APP_STATE_RUNNING = 2,            // modules and main window are up
    APP_STATE_QUITTING = 256,         // going down; so is everything above 255
    APP_STATE_TERMINATED = 257,       // the drawing runtime is gone
};

class VoAppService : public ExSystemServices, public ExHostAppServices {
  public:
    VoAppService() = default;
    ~VoAppService() override;

    // Overrides in the order of their slots: the first replaces the system side's own, the others
    // are new there and are reached from the host side through forwarders.
    OdString formatMessage(unsigned int errorCode, va_list* argList) override;
    OdString findFile(const OdString& filename, OdDbBaseDatabase* database,
                      FindFileHint hint) override;
    OdDbUndoControllerPtr newUndoController() override;
    void collectFilePathsInDirectory(OdStringArray& result, const OdString& directory,
                                     const OdString& mask) override;
    OdString getSubstituteFont(const OdString& fontName, OdFontType fontType) override;
    bool ttfFileNameByDescriptor(const OdTtfDescriptor& description, OdString& filename) override;
    bool getPassword(const OdString& dwgName, bool isXref, OdPassword& password) override;

    /// Reads the command line: the paths of the two configuration files, the first tree with its
    /// Runtime branch, and the service dictionary. For a usage request it prints the usage text and
    /// ends the process with status 0.
    void parseCommandLine(const char** argv, int argc, VoMainAppCallback* callback);
    void printUsage();

    /// Replaces the tree by the system file's, with the Runtime branch carried over: eOk,
    /// eFileNotFound or eFileAccessErr. A failure is logged and leaves the tree as it was.
    OdResult loadSystemConfig();
    /// Reads the user file, which is created when it isn't there, and decides the User branch.
    void loadUserConfig();
    /// Writes the user's tree to the path, or for the empty path to the user file. A failure is
    /// logged and leaves the old file. The first time that would overwrite a user file whose
    /// settings were discarded as out of date, that file is kept beside it, named after its
    /// version.
    void saveUserConfig(const OdAnsiString& path);
    /// Saves the user's tree and lets both trees go.
    void releaseConfig();

    /// The module of that file name, loaded if need be; null when it can't be. Carries no
    /// reference.
    OdRxModule* loadExModule(const OdString& moduleName, bool silent);
    /// Unloads a module that loadExModule loaded; any other, and null, is left alone.
    void unloadExModule(OdRxModule* module);
    /// Unloads every such module whose file name has this stem, whatever its case.
    void unloadExModuleByName(const OdString& moduleName);
    /// Unloads them all, last loaded first; before releaseConfig, since their list is in the tree.
    void unloadAllExModules();

    /// The dictionary of services; null before parseCommandLine and after its release.
    const OdRxDictionaryPtr& arbitraryDictionary() const { return arbitDict; }
    void releaseArbitraryDictionary() { arbitDict.release(); }

    VoJsonPtr systemTree() const { return sysConfig; }
    VoJsonPtr userTree() const { return userConfig; }

    /// As the command line left them, path variables not replaced.
    const OdAnsiString& systemConfigPath() const { return sysConfigPath; }
    const OdAnsiString& userFilePath() const { return userConfigPath; }

    void setAppState(AppState state) { appState = state; }
    bool isQuitting() const { return appState >= APP_STATE_QUITTING; }

  private:
    void takeConfigPaths(const char** argv, int argc, VoMainAppCallback* callback);
    VoJsonPtr readOptions(const char** argv, int argc);
    bool takeOption(int option, const char* argument, const VoJsonPtr& options);
    VoJsonPtr newRuntimeBranch(VoMainAppCallback* callback);
    void createArbitraryDictionary();

    void carryRuntimeOver(const VoJsonPtr& formerTree);
    void applySystemSettings();
    void createUserFile(const OdAnsiString& path);
    void noteWhetherOutdated(const OdAnsiString& path);
    void mergeUserConfig();

    VoJsonPtr extModuleList() const;
    void addExtModuleEntry(OdRxModule* module, const OdString& path);
    void removeExtModuleEntry(OdRxModule* module);

    // The order matters: destruction runs backwards, from the paths to the dictionary.
    OdRxDictionaryPtr arbitDict;
    OdArray<OdRxModulePtr> extModules;
    VoJsonPtr sysConfig;
    VoJsonPtr userConfig;
    OdAnsiString exeRootPath;
    OdAnsiString userConfigPath;
    OdAnsiString sysConfigPath;
    // Plain by design: every writer is the interface thread, and vo_is_appQuiting may be asked by
    // others without harm.
    std::int32_t appState = APP_STATE_CREATED;
    bool userConfigIsMadeUp = false;  // no user file has been read
    OutdatedUserFile outdatedUserFile;
};

/// The one application service object of the process; null before vemo_root and after vemo_exit.
extern VoAppService* g_appService;

/// The same, for callers that can't do without: raises OdError (eNotInitializedYet) while it is
/// null.
VoAppService& appService();
