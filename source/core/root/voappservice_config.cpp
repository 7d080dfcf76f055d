// The configuration: how the one tree comes out of the system file, the user file and the process.
#include <sys/stat.h>

#include <global/log.h>
#include <utils/paths.h>
#include <utils/safefile.h>

#include "rootlog.h"
#include "rootservices.h"
#include "runobserver.h"
#include "treehelpers.h"
#include "voappservice.h"

namespace {

// Majors and minors that hold for a tree that doesn't say.
constexpr int kDefaultMajor = 1;
constexpr int kDefaultMinor = 0;
// What a new user file says: 0.1, older than any system file that has a version of its own.
constexpr int kNewUserFileVersion = 1;

constexpr int kDefaultLogLevel = 4;

struct ConfigVersion {
    int major = kDefaultMajor;
    int minor = kDefaultMinor;
};

// Leaves both alone unless the node is an object with a version above 0.
void readConfigVersion(const VoJsonPtr& node, int& major, int& minor) {
    if (!tree::isObject(node) || !node->hasProperty("version")) {
        return;
    }
    const int version = tree::integerPropertyOr(node, "version", 0);
    if (version > 0) {
        major = version >> 8;
        minor = version & 255;
    }
}

ConfigVersion versionOf(const VoJsonPtr& node) {
    ConfigVersion version;
    readConfigVersion(node, version.major, version.minor);
    return version;
}

// As a whole, minors aside.
bool isOutdated(const VoJsonPtr& userTree, const VoJsonPtr& systemBranch) {
    return systemBranch && versionOf(userTree).major < versionOf(systemBranch).major;
}

// A file whose top level is no object is as unreadable as one that is no JSON.
bool readTree(const OdAnsiString& path, VoJsonPtr& tree) {
    VoJson file;
    if (!file.read(path, -1, nullptr) || !tree::isObject(file)) {
        return false;
    }
    tree = file;
    return true;
}

void addMissing(const VoJsonPtr& target, const VoJsonPtr& source) {
    for (int index = 0; index < source->propertyCount(); ++index) {
        OdAnsiString key;
        const VoJsonPtr value = source->propertyAt(index, key);
        if (!key.isEmpty() && !target->hasProperty(key)) {
            target->set_propertyJ(key, value->clone());
            run::settingTaken(key.c_str(), false);
        }
    }
}

}  // namespace

OdResult VoAppService::loadSystemConfig() {
    const OdAnsiString path =
        OdStringToUtf8String(findFile(OdUtf8StringToOdString(sysConfigPath), nullptr, kDefault));
    const VoJsonPtr formerTree = sysConfig;
    if (path.isEmpty()) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kAppService, "loadSystemConfig",
                       "查找VEMO配置文件失败");
        return eFileNotFound;
    }
    if (!readTree(path, sysConfig)) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kAppService, "loadSystemConfig",
                       "读取配置文件失败");
        return eFileAccessErr;
    }
    run::note([&] { return "read " + path; });
    carryRuntimeOver(formerTree);
    applySystemSettings();
    if (const vosi::VosiApRxEventPtr dispatcher = eventDispatcher()) {
        dispatcher->fireSysConfigLoaded();
    }
    return eOk;
}

void VoAppService::carryRuntimeOver(const VoJsonPtr& formerTree) {
    const VoJsonPtr runtime = formerTree->getProperty("Runtime");
    const VoJsonPtr copy = runtime ? runtime->clone() : VoJsonPtr();
    const VoJsonPtr carried = tree::newObject();
    // A branch that modules made too deep to be copied is carried over itself.
    carried->set_propertyJ("Runtime", copy ? copy : runtime);
    carried->mergeProperty("Runtime", sysConfig->getProperty("Runtime"));
    sysConfig->set_propertyJ("Runtime", carried->getProperty("Runtime"));
}

void VoAppService::applySystemSettings() {
    const int number = tree::integerPropertyOr(tree::at(sysConfig, "Core/AppInfo"), "codepage", 0);
    setSystemCodePage(number == 0 ? OdCodePageId::kAnsi936 : OdCharMapper::ansiCpToAcadCp(number));

    const VoJsonPtr debug = tree::at(sysConfig, "Core/Debug");
    const OdAnsiString logFile = tree::textOr(tree::at(debug, "logfile"), "");
    vo_set_print_log_to_file(tree::boolOr(tree::at(debug, "log2file"), false));
    if (!logFile.isEmpty()) {
        vo_set_Log_file(vosiutEvaluatePath(logFile, sysConfig));
    }
    vo_set_print_log_level(tree::integerPropertyOr(debug, "grade", kDefaultLogLevel));
}

void VoAppService::loadUserConfig() {
    const OdAnsiString path = vosiutEvaluatePath(userConfigPath, sysConfig);
    struct stat status {};
    const bool isThere = stat(path.c_str(), &status) == 0;
    if (!isThere) {
        createUserFile(path);
    }
    if (!readTree(path, userConfig)) {
        // A tree that was made up for want of a file must not be saved over one that turned up and
        // that its owner may still mend.
        if (isThere && userConfigIsMadeUp) {
            userConfig = nullptr;
        }
        return;
    }
    userConfigIsMadeUp = false;
    run::note([&] { return "read " + path; });
    noteWhetherOutdated(path);
    mergeUserConfig();
    if (const vosi::VosiApRxEventPtr dispatcher = eventDispatcher()) {
        dispatcher->fireUserConfigLoaded();
    }
}

void VoAppService::createUserFile(const OdAnsiString& path) {
    if (!userConfig) {
        userConfig = tree::objectUnder(sysConfig, "User");
        userConfigIsMadeUp = true;
    }
    if (!userConfig) {
        // Whole before it is the user's: without its version it would count as a file of 1.0.
        const VoJsonPtr made = tree::newObject();
        made->SetDataI("version", kNewUserFileVersion);
        userConfig = made;
    }
    if (!voutWriteFileSafely(path.str(), userConfig->writeJson().view())) {
        rootlog::write(rootlog::kSurvived, __LINE__, rootlog::kAppService, "loadUserConfig",
                       "创建%s文件失败！", path.c_str());
        return;
    }
    run::note([&] { return "created " + path; });
}

// Before the merge, which lets go of what an outdated file held.
void VoAppService::noteWhetherOutdated(const OdAnsiString& path) {
    const int members = userConfig->propertyCount() - (userConfig->hasProperty("version") ? 1 : 0);
    outdatedUserFile.forget();
    if (isOutdated(userConfig, tree::objectUnder(sysConfig, "User")) && members > 0) {
        const ConfigVersion version = versionOf(userConfig);
        outdatedUserFile.note(path, version.major, version.minor);
    }
}

void VoAppService::mergeUserConfig() {
    const VoJsonPtr systemBranch = tree::objectUnder(sysConfig, "User");
    if (!systemBranch) {
        run::settingsTaken(userConfig, true);
        sysConfig->set_propertyJ("User", userConfig);
        return;
    }
    if (isOutdated(userConfig, systemBranch)) {
        run::note([] {
            return OdAnsiString(
                "the user file is out of date: the system's User branch takes its place");
        });
        // Out of date as a whole: the system's settings take the user's place, in the file too at
        // the next save.
        userConfig = systemBranch;
        run::settingsTaken(systemBranch, false);
        return;
    }
    run::settingsTaken(userConfig, true);
    if (versionOf(userConfig).minor != versionOf(systemBranch).minor) {
        run::note([] {
            return OdAnsiString("what the user file lacks comes from the system's User branch");
        });
        addMissing(userConfig, systemBranch);
        userConfig->SetDataI("version", tree::integerPropertyOr(systemBranch, "version", 0));
        run::settingTaken("version", false);
    }
    sysConfig->set_propertyJ("User", userConfig);
}

void VoAppService::saveUserConfig(const OdAnsiString& path) {
    if (path.isEmpty()) {
        const OdAnsiString own = vosiutEvaluatePath(userConfigPath, sysConfig);
        if (!own.isEmpty()) {
            saveUserConfig(own);
        }
        return;
    }
    if (!outdatedUserFile.keepBefore(path) ||
        !VoJson(userConfig).write(path.str(), VoJson::kIndented, nullptr)) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kAppService, "saveUserConfig",
                       "写入用户配置文件失败");
        return;
    }
    run::note([&] { return "wrote " + path; });
}

void VoAppService::releaseConfig() {
    saveUserConfig(vosiutEvaluatePath(userConfigPath, sysConfig));
    sysConfig = nullptr;
    userConfig = nullptr;
    userConfigIsMadeUp = false;
    outdatedUserFile.forget();
}
