#include "startfailure.h"

#include <core/vemo_root.h>

#include "configuredmodules.h"

namespace vemoapp {

namespace {

std::string missingMainWindow() {
    std::string text = "no main window (service \"Vemo/MainUI\"): ";
    if (configuredCoreModules() == 0) {
        return text + "the system configuration is missing, damaged or names no modules";
    }
    std::string modules;
    for (const MissingModule& missing : missingCoreModules()) {
        modules += (modules.empty() ? "" : "; ") + missing.file + " not loaded: " + missing.reason;
    }
    return text + (modules.empty() ? "none of the loaded modules registers it" : modules);
}

}  // namespace

std::string startFailure(int result) {
    if (result == kVemoNoMainWindow) {
        return missingMainWindow();
    }
    return "the main window can't be shown, result " + std::to_string(result);
}

}  // namespace vemoapp
