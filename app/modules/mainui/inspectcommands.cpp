#include "inspectcommands.h"

#include <charconv>

#include <app/services.h>

#include "configuredmodules.h"
#include "findfile.h"
#include "say.h"
#include "text.h"

namespace vemoapp {

namespace {

using Hint = OdDbBaseHostAppServices::FindFileHint;

struct NamedHint {
    const char* name;
    Hint value;
};

constexpr NamedHint kHints[] = {{"DEFAULT", OdDbBaseHostAppServices::kDefault},
                                {"FONT", OdDbBaseHostAppServices::kFontFile},
                                {"SHX", OdDbBaseHostAppServices::kCompiledShapeFile},
                                {"TTF", OdDbBaseHostAppServices::kTrueTypeFontFile},
                                {"IMAGE", OdDbBaseHostAppServices::kEmbeddedImageFile},
                                {"XREF", OdDbBaseHostAppServices::kXRefDrawing},
                                {"PATTERN", OdDbBaseHostAppServices::kPatternFile},
                                {"FONTMAP", OdDbBaseHostAppServices::kFontMapFile},
                                {"TEXTURE", OdDbBaseHostAppServices::kTextureMapFile}};

std::vector<std::string> hintNames() {
    std::vector<std::string> names;
    for (const NamedHint& hint : kHints) {
        names.emplace_back(hint.name);
    }
    return names;
}

const NamedHint* hintNamed(const std::string& name) {
    for (const NamedHint& hint : kHints) {
        if (upperCase(name) == hint.name) {
            return &hint;
        }
    }
    return nullptr;
}

void findCommand(const Command::Arguments& arguments) {
    const NamedHint* hint = arguments.size() > 1 ? hintNamed(arguments[1]) : &kHints[0];
    if (arguments.empty() || !hint) {
        say("FIND name [hint]; hints are " + joined(hintNames(), ", ", std::size(kHints)) + ".");
        return;
    }
    OdString found = findFile(OdUtf8StringToOdString(arguments[0]), hint->value);
    say(found.isEmpty() ? arguments[0] + " is not found." : OdStringToUtf8String(found).str());
}

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
    table.add({"FIND", "name [hint]", "shows where a file is found", findCommand});
    table.add({"MODULES", "", "lists the modules, and why one isn't loaded", modulesCommand});
    table.add({"SERVICES", "", "lists the services by key", servicesCommand});
}

}  // namespace vemoapp
