#include "inspectcommands.h"

#include <app/services.h>

#include "configuredmodules.h"
#include "say.h"

namespace vemoapp {

namespace {

void showConfigurationFiles() {
    for (const char* key : {"system", "user"}) {
        VoJsonPtr path = vo_runtime_config(OdAnsiString("configFiles/") + key);
        say(std::string(key) + " configuration: " + (path ? path->strValue().str() : "not known"));
    }
}

void configCommand(const Command::Arguments& arguments) {
    if (arguments.empty()) {
        showConfigurationFiles();
        return;
    }
    VoJsonPtr node = vo_sys_config(arguments[0]);
    say(node ? node->writeJson().str() : arguments[0] + " is not in the configuration.");
}

void modulesCommand(const Command::Arguments&) {
    const auto loaded = odrxDynamicLinker()->loadedModules();
    for (const OdRxModulePtr& loadedModule : loaded) {
        say("  loaded   " + OdStringToUtf8String(loadedModule->moduleName()).str());
    }
    for (const auto& missingOfWave : {missingCoreModules(), missingUserModules()}) {
        for (const MissingModule& missing : missingOfWave) {
            say("  missing  " + missing.file + " (" + missing.list + "): " + missing.reason);
        }
    }
}

void servicesCommand(const Command::Arguments&) {
    const OdChar* const keys[] = {
        vosi::kFiberKey,      vosi::kFiberCoroutineKey, vosi::kFindFontsKey,
        vosi::kMainUIKey,     vosi::kDocMgrKey,         vosi::kEditSystemKey,
        vosi::kAliasMgrKey,   vosi::kRemoteDebugSvrKey, vosi::kRemoteDebugStubKey,
        vosi::kAutoTestKey,   vosi::kInputQueueKey,     vosi::kOpenWizardKey,
        vosi::kGetPasswordKey};
    for (const OdChar* key : keys) {
        bool there = !vo_arbitDict_getservice(key).isNull();
        say((there ? "  there    " : "  absent   ") + OdStringToUtf8String(key).str());
    }
}

}  // namespace

void addInspectCommands(CommandTable& table) {
    table.add({"CONFIG", "[key path]", "shows the configuration's files, or a part of it as JSON",
               configCommand});
    table.add({"MODULES", "", "lists the modules, and why one isn't loaded", modulesCommand});
    table.add({"SERVICES", "", "lists the services by key", servicesCommand});
}

}  // namespace vemoapp
