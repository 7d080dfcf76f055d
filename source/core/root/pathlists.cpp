#include "pathlists.h"

#include <utils/paths.h>

#include "core/voexports.h"
#include "runobserver.h"
#include "treehelpers.h"

namespace vosi {

namespace {

using Paths = OdArray<OdAnsiString>;

// Those of the user come first.
Paths configuredPaths(const char* key) {
    Paths paths;
    voutEnumPaths(vo_user_config(OdAnsiString("paths/") + key, 0), paths);
    voutEnumPaths(vo_sys_config(OdAnsiString("Core/paths/") + key), paths);
    return paths;
}

VoJsonPtr runtimePaths(const VoJsonPtr& runtimeRoot) {
    VoJsonPtr lists = vo_runtime_config("paths");
    if (!lists && runtimeRoot) {
        lists = runtimeRoot->set_propertyJ("paths", tree::newObject());
    }
    return lists;
}

OdAnsiString firstPath(const VoJsonPtr& list) {
    if (!tree::isArray(list)) {
        return tree::textOr(list, "");
    }
    for (int index = 0; index < list.ArrayCount(); ++index) {
        if (OdAnsiString path = tree::textOr(list(index), ""); !path.isEmpty()) {
            return path;
        }
    }
    return OdAnsiString();
}

}  // namespace

void buildPathList(const char* key, const VoJsonPtr& runtimeRoot, const VoJsonPtr& systemRoot) {
    const Paths configured = configuredPaths(key);
    const VoJsonPtr lists = runtimePaths(runtimeRoot);
    if (!lists) {
        return;
    }
    const VoJsonPtr list = tree::newArray();
    lists->set_propertyJ(key, list);
    Paths seen;
    for (const OdAnsiString& path : configured) {
        const OdAnsiString evaluated = vosiutEvaluatePath(path, systemRoot);
        if (!evaluated.isEmpty() && !seen.contains(evaluated)) {
            seen.append(evaluated);
            list->append(tree::text(evaluated));
        }
    }
}

void seedUserDataDir(const char* key, const OdAnsiString& source, const VoJsonPtr& systemRoot) {
    const OdAnsiString target = firstPath(vo_runtime_config(voutCombinePath("paths", key)));
    OdAnsiString found;
    if (target.isEmpty() || voutIsExistFileNoCaseSensitive(target, found)) {
        return;
    }
    voutCreateDir(target);
    const OdAnsiString shipped = vosiutEvaluatePath(source, systemRoot);
    const bool isWhole = voutCopyFile(shipped, target);
    run::note(
        [&] { return (isWhole ? "filled " : "couldn't fill ") + target + " from " + shipped; });
}

}  // namespace vosi
