#include "startupstages.h"

#include <iostream>

#include <core/voexports.h>

#include "configuredmodules.h"

namespace vemoapp {

namespace {

void showStage(const std::string& stage, const std::string& text) {
    std::cout << stage << std::string(stage.size() < 16 ? 16 - stage.size() : 1, ' ') << text
              << std::endl;
}

std::string configFile(const char* key) {
    VoJsonPtr path = vo_runtime_config(OdAnsiString("configFiles/") + key);
    return path ? path->strValue().str() : "not known";
}

}  // namespace

void StartupStages::onSysConfigLoaded() {
    showStage("configuration", configFile("system"));
}

void StartupStages::onUserConfigLoaded() {
    showStage("user settings", configFile("user"));
}

void StartupStages::onMainWindowReady() {
    unsigned int loaded = odrxDynamicLinker()->loadedModules().size();
    showStage("main window", "ready; " + std::to_string(loaded) + " modules loaded, " +
                                 std::to_string(missingCoreModules().size()) + " missing");
}

void StartupStages::onAppStarted() {
    showStage("started", "HELP lists the commands");
}

void StartupStages::onAppExiting() {
    showStage("ending", "settings go to " + configFile("user"));
}

}  // namespace vemoapp
