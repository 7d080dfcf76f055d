#include "configuredmodules.h"

#include <core/voexports.h>
#include <utils/paths.h>

namespace vemoapp {

namespace {

struct ModuleList {
    const char* key;
    bool bareNames;  // the entry foo means libfoo.so
};

constexpr ModuleList kCoreLists[] = {
    {"Core/OdaLibrary", false}, {"Core/CoreLibrary", true}, {"Core/Library", true}};
constexpr ModuleList kUserList = {"User/Library", false};

OdString fileNameOf(const OdAnsiString& entry, bool bareName) {
    OdString name = OdUtf8StringToOdString(entry);
    return bareName ? L"lib" + name + L".so" : name;
}

// The linker notes some failures under the path that was asked for and some under the bare name.
// Its words often begin with the file's name, which the user has been told already.
std::string reasonFor(const OdString& moduleName) {
    OdString reason = L"not tried";
    const auto failures = odrxDynamicLinker()->failures();
    for (const OdRxModuleFailure& failure : failures) {
        if (voutGetLastFileNameInPathW(failure.moduleName) == moduleName) {
            reason = failure.reason;
        }
    }
    const OdString repeated = moduleName + L": ";
    if (reason.view().starts_with(repeated.view())) {
        reason = reason.mid(repeated.getLength());
    }
    return OdStringToUtf8String(reason).str();
}

void addMissing(const ModuleList& list, std::vector<MissingModule>& missing) {
    VoJsonPtr entries = vo_sys_config(list.key);
    for (int index = 0; index < entries.ArrayCount(); ++index) {
        OdAnsiString entry = entries(index)->strValue();
        OdString file = fileNameOf(entry, list.bareNames);
        OdString moduleName = voutGetLastFileNameInPathW(file);
        if (!entry.isEmpty() && !odrxDynamicLinker()->loadedModule(moduleName)) {
            missing.push_back({list.key, OdStringToUtf8String(file).str(), reasonFor(moduleName)});
        }
    }
}

}  // namespace

std::vector<MissingModule> missingCoreModules() {
    std::vector<MissingModule> missing;
    for (const ModuleList& list : kCoreLists) {
        addMissing(list, missing);
    }
    return missing;
}

std::vector<MissingModule> missingUserModules() {
    std::vector<MissingModule> missing;
    addMissing(kUserList, missing);
    return missing;
}

int configuredCoreModules() {
    int count = 0;
    for (const ModuleList& list : kCoreLists) {
        count += vo_sys_config(list.key).ArrayCount();
    }
    return count;
}

}  // namespace vemoapp
