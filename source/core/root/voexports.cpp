// The exported accessors: thin doors onto the application service object.
#include "core/voexports.h"

#include <utils/paths.h>

#include "treehelpers.h"
#include "voappservice.h"

namespace {

VoJsonPtr systemTree() {
    return g_appService ? g_appService->systemTree() : VoJsonPtr();
}

VoJsonPtr createUnder(const VoJsonPtr& parent, const OdAnsiString& key, int createType) {
    if (!parent) {
        return VoJsonPtr();
    }
    // The look-up knows one separator and the creation two, so what wasn't found may be there.
    if (VoJsonPtr found = parent->getProperty(key)) {
        return found;
    }
    const VoJsonPtr node = ElementValue::createObject(createType);
    return node ? parent->set_propertyJ(key, node) : VoJsonPtr();
}

VoJsonPtr createAtPath(const VoJsonPtr& root, const OdAnsiString& key, int createType) {
    OdAnsiString path = key;
    path.trimRight('/').trimRight('\\');
    const OdAnsiString parentPath = voutGetParentDir(path);
    if (parentPath.isEmpty()) {
        return createUnder(root, path, createType);
    }
    root->makePath(parentPath);
    return createUnder(root->quickGetProperty(parentPath), voutGetFileName(path), createType);
}

}  // namespace

VoJsonPtr vo_sys_config(const OdAnsiString& key) {
    const VoJsonPtr root = systemTree();
    return key.isEmpty() ? root : tree::at(root, key);
}

VoJsonPtr vo_runtime_config(const OdAnsiString& key) {
    return tree::at(systemTree(), key.isEmpty() ? OdAnsiString("Runtime") : "Runtime/" + key);
}

VoJsonPtr vo_user_config(const OdAnsiString& key, int createType) {
    if (key.isEmpty()) {
        // The branch as the version rule left it, not the user's own tree; callers rely on it.
        return tree::at(systemTree(), "User");
    }
    const VoJsonPtr root = g_appService ? g_appService->userTree() : VoJsonPtr();
    VoJsonPtr found = tree::at(root, key);
    if (found || createType == 0 || !root) {
        return found;
    }
    return createAtPath(root, key, createType);
}

void vo_save_user_config(const OdAnsiString& path) {
    if (g_appService) {
        g_appService->saveUserConfig(path);
    }
}

void vo_notify_user_config_changed(VoJsonPtr /*node*/) {}

std::time_t vo_build_timestamp() {
    static const std::time_t stamp = voutStrToTime(__DATE__ " " __TIME__);
    return stamp;
}

bool vo_is_appQuiting() {
    return !g_appService || g_appService->isQuitting();
}

OdRxModule* voLoad_extModule(const OdString& name, bool silent) {
    return appService().loadExModule(name, silent);
}

void voUnload_extModule(const OdString& name) {
    if (g_appService) {
        g_appService->unloadExModuleByName(name);
    }
}

ExHostAppServices* vodbSystemServices() {
    return g_appService;
}
