#include "vemo_root_modules.h"

#include "core/voexports.h"
#include "rootlog.h"
#include "runobserver.h"
#include "treehelpers.h"

namespace {

// The key is misspelled in every installation's modules, and so it stays.
constexpr const char* kFixedModulesKey = "fixExtLibray";

OdRxModulePtr loadSilently(const OdString& fileName) {
    const run::Span span(run::SpanKind::kModuleLoad, fileName);
    if (OdRxModuleLibrary* library = odrxSystemServices()->loadModuleLib(fileName, true)) {
        return run::moduleAnswered(
            fileName,
            OdRxModulePtr(odrxDynamicLinker()->moduleOfLibrary(library, true), kOdRxObjAttach));
    }
    return run::moduleAnswered(fileName, odrxDynamicLinker()->loadModule(fileName, true));
}

OdRxModulePtr loadAndRecord(const OdString& fileName, const OdString& listedName,
                            const VoJsonPtr& record) {
    OdRxModulePtr module = loadSilently(fileName);
    if (module.isNull()) {
        // A list's entry has always been a part of the format here, so a "%%" in it reads as one.
        rootlog::writeAsFormat(rootlog::kSurvived, __LINE__, rootlog::kVemoRoot, "operator()",
                               OdStringToUtf8String(listedName) + "加载失败!");
        return module;
    }
    if (record) {
        record->append(tree::text(OdStringToUtf8String(module->moduleName())));
    }
    return module;
}

template <class Action>
void forEachName(const VoJsonPtr& list, Action&& action) {
    if (!tree::isArray(list)) {
        return;
    }
    for (int index = 0; index < list.ArrayCount(); ++index) {
        action(OdUtf8StringToOdString(tree::textOr(list(index), "")));
    }
}

VoJsonPtr newRecord(const VoJsonPtr& loadedModules, const char* key) {
    return loadedModules->set_propertyJ(key, tree::newArray());
}

}  // namespace

OdRxModulePtr loadConfiguredModule(const OdString& name, VoJsonPtr record) {
    if (name.isEmpty()) {
        return OdRxModulePtr();
    }
    return loadAndRecord(L"lib" + name + L".so", name, record);
}

void loadModules() {
    const VoJsonPtr core = vo_sys_config("Core");
    const VoJsonPtr runtime = vo_runtime_config("");
    const VoJsonPtr loadedModules = tree::newObject();
    if (runtime) {
        runtime->set_propertyJ("loadedModules", loadedModules);
    }
    const VoJsonPtr coreRecord = newRecord(loadedModules, "core");
    const VoJsonPtr fixedRecord = newRecord(loadedModules, kFixedModulesKey);
    const VoJsonPtr odaRecord = newRecord(loadedModules, "odaExt");

    forEachName(tree::at(core, "OdaLibrary"), [&](const OdString& fileName) {
        if (!fileName.isEmpty()) {
            loadAndRecord(fileName, fileName, odaRecord);
        }
    });
    forEachName(tree::at(core, "CoreLibrary"),
                [&](const OdString& name) { loadConfiguredModule(name, coreRecord); });
    forEachName(tree::at(core, "Library"),
                [&](const OdString& name) { loadConfiguredModule(name, fixedRecord); });
}

void loadUserLibraries() {
    const auto load = [](const OdString& name) { voLoad_extModule(name, false); };
    forEachName(vo_sys_config("User/Library"), load);
    forEachName(vo_runtime_config("ExeOption/Load"), load);
}

VoJsonPtr unloadFixedModules() {
    VoJsonPtr names = vo_runtime_config(OdAnsiString("loadedModules/") + kFixedModulesKey);
    if (!tree::isArray(names)) {
        return names;
    }
    for (int index = names.ArrayCount() - 1; index >= 0; --index) {
        const OdString name = OdUtf8StringToOdString(tree::textOr(names(index), ""));
        // A module that is gone already, by a reactor's hand for instance, is passed over.
        if (!name.isEmpty() && !odrxDynamicLinker()->loadedModule(name).isNull()) {
            const run::Span span(run::SpanKind::kModuleEnd, name);
            odrxDynamicLinker()->unloadModule(name);
        }
    }
    return names;
}
