// Extension modules: those that are loaded at the user's request, and the two records of them.
#include <utils/paths.h>

#include "core/voexports.h"
#include "rootlog.h"
#include "runobserver.h"
#include "treehelpers.h"
#include "voappservice.h"

namespace {

// The linker's words for a handle and for a name, one after the other. The result carries a
// reference.
OdRxModulePtr loadByFileOrName(OdRxSystemServices& system, const OdString& name, bool silent) {
    const run::Span span(run::SpanKind::kModuleLoad, name);
    if (OdRxModuleLibrary* library = system.loadModuleLib(name, silent)) {
        return run::moduleAnswered(
            name,
            OdRxModulePtr(odrxDynamicLinker()->moduleOfLibrary(library, true), kOdRxObjAttach));
    }
    return run::moduleAnswered(name, odrxDynamicLinker()->loadModule(name, true));
}

OdAnsiString stemOf(const OdString& name) {
    return voutGetFileNoExtName(OdStringToUtf8String(name));
}

}  // namespace

OdRxModule* VoAppService::loadExModule(const OdString& moduleName, bool silent) {
    OdRxModulePtr module;
    try {
        module = loadByFileOrName(*this, moduleName, silent);
    } catch (...) {
        // Whatever a module raises while it is loaded must not end the application.
        rootlog::write(rootlog::kSurvived, __LINE__, rootlog::kAppService, "loadExModule",
                       "加载%s文件失败！", OdStringToUtf8String(moduleName).c_str());
        return nullptr;
    }
    if (!module.isNull() && !extModules.contains(module)) {
        extModules.append(module);
        addExtModuleEntry(module.get(), moduleName);
    }
    return module.get();
}

void VoAppService::unloadExModule(OdRxModule* module) {
    unsigned int index = 0;
    // Holds the module until its entry in the tree, which doesn't, is gone.
    const OdRxModulePtr held(module);
    if (!extModules.find(held, index)) {
        return;
    }
    extModules.removeAt(index);
    const run::Span span(run::SpanKind::kModuleEnd, module->moduleName());
    try {
        odrxDynamicLinker()->unloadModule(module->moduleName());
    } catch (...) {
        // The module is gone all the same, and nothing may point to it.
        removeExtModuleEntry(module);
        throw;
    }
    removeExtModuleEntry(module);
}

void VoAppService::unloadExModuleByName(const OdString& moduleName) {
    if (moduleName.isEmpty()) {
        return;
    }
    const OdAnsiString stem = stemOf(moduleName);
    const OdArray<OdRxModulePtr> present(extModules);
    for (unsigned int index = present.size(); index-- > 0;) {
        if (Od_stricmpA(stemOf(present[index]->moduleName()), stem) == 0) {
            unloadExModule(present[index].get());
        }
    }
}

void VoAppService::unloadAllExModules() {
    // The copy keeps the buffer of this moment, while the removals write to one of their own.
    const OdArray<OdRxModulePtr> present(extModules);
    for (unsigned int index = present.size(); index-- > 0;) {
        unloadExModule(present[index].get());
    }
}

VoJsonPtr VoAppService::extModuleList() const {
    VoJsonPtr list = vo_runtime_config("ExtModule");
    if (!tree::isArray(list)) {
        list = tree::newArray();
        if (const VoJsonPtr runtime = vo_runtime_config("")) {
            runtime->set_propertyJ("ExtModule", list);
        }
    }
    return list;
}

void VoAppService::addExtModuleEntry(OdRxModule* module, const OdString& path) {
    if (!module || path.isEmpty()) {
        return;
    }
    const VoJsonPtr entry = tree::newObject();
    entry->set_propertyP("module", module, false);
    entry->set_propertysW("path", path, false);
    extModuleList()->append(entry);
}

void VoAppService::removeExtModuleEntry(OdRxModule* module) {
    if (!module) {
        return;
    }
    const VoJsonPtr list = extModuleList();
    for (int index = list.ArrayCount() - 1; index >= 0; --index) {
        const VoJsonPtr entry = list(index);
        if (tree::isObject(entry) && tree::pointerPropertyOr(entry, "module", nullptr) == module) {
            list->removeItem(index);
        }
    }
}
