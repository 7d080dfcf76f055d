#include "configuredmodules.h"

#include <core/voexports.h>
#include <utils/paths.h>

namespace vemoapp {

namespace {

struct ModuleList {
    const char* key;
    bool bareNames;  // the entry foo means libfoo.so
};

constexpr ModuleList kLists[] = {{"Core/OdaLibrary", false},
                                 {"Core/CoreLibrary", true},
                                 {"Core/Library", true},
                                 {"User/Library", false}};

OdString fileNameOf(const OdAnsiString& entry, bool bareName) {
    OdString name = OdUtf8StringToOdString(entry);
    return bareName ? L"lib" + name + L".so" : name;
}

std::string reasonFor(const OdString& file) {
    std::string reason = "not tried";
    const auto failures = odrxDynamicLinker()->failures();
    for (const OdRxModuleFailure& failure : failures) {
        if (failure.moduleName == file) {
            reason = OdStringToUtf8String(failure.reason).str();
        }
    }
    return reason;
}

void addMissing(const ModuleList& list, std::vector<MissingModule>& missing) {
    VoJsonPtr entries = vo_sys_config(list.key);
    for (int index = 0; index < entries.ArrayCount(); ++index) {
        OdAnsiString entry = entries(index)->strValue();
        OdString file = fileNameOf(entry, list.bareNames);
        OdString moduleName = voutGetLastFileNameInPathW(file);
        if (!entry.isEmpty() && !odrxDynamicLinker()->loadedModule(moduleName)) {
            missing.push_back({list.key, OdStringToUtf8String(file).str(), reasonFor(file)});
        }
    }
}

}  // namespace

std::vector<MissingModule> missingModules() {
    std::vector<MissingModule> missing;
    for (const ModuleList& list : kLists) {
        addMissing(list, missing);
    }
    return missing;
}

int configuredModuleCount() {
    return vo_sys_config("Core/OdaLibrary").ArrayCount() +
           vo_sys_config("Core/CoreLibrary").ArrayCount() +
           vo_sys_config("Core/Library").ArrayCount();
}

}  // namespace vemoapp
