#include "appcallback.h"

#include <core/voexports.h>
#include <core/voservicekeys.h>
#include <utils/elementvalue.h>
#include <utils/paths.h>

#include "findfile.h"
#include "startupstages.h"
#include "xdgpaths.h"

namespace vemoapp {

namespace {

void addStartupStages() {
    auto dispatcher = vosi::VosiApRxEventPtr(odrxSysRegistry()->getAt(vosi::kRxEventKey));
    if (dispatcher) {
        dispatcher->addReactor(OdRxObjectImpl<StartupStages>::createObject().get());
    }
}

// Where the library finds the file, or the name when it doesn't.
OdAnsiString foundAt(const OdAnsiString& name) {
    OdString found = findFile(OdUtf8StringToOdString(name));
    return found.isEmpty() ? name : OdStringToUtf8String(found);
}

}  // namespace

void AppCallback::initialize() {
    OdAnsiString exeFolder = vo_runtime_config("ExeRootPath")->strValue();
    odrxDynamicLinker()->addModuleFolder(
        OdUtf8StringToOdString(voutCombinePath(exeFolder, "modules")));
    publishConfigFiles(exeFolder);
    addStartupStages();
}

void AppCallback::publishConfigFiles(const OdAnsiString& exeFolder) {
    OdAnsiString system =
        files.system.empty() ? voutCombinePath(exeFolder, "vemo.json") : OdAnsiString(files.system);
    OdAnsiString user = files.user.empty() ? voutCombinePath(queryAppDataPath(), "user.json")
                                           : OdAnsiString(files.user);
    VoJsonPtr node = ElementValue::createObject(kElementObject);
    node->set_propertys("system", foundAt(system), false);
    node->set_propertys("user", vosiutEvaluatePath(user, vo_sys_config("")), false);
    vo_runtime_config("")->set_propertyJ("configFiles", node);
}

OdAnsiString AppCallback::queryAppDataPath() {
    OdAnsiString folder = voutCombinePath(configHome(), "vemocad");
    // A folder that can't be made is no reason to stop: the library says what it couldn't write.
    static_cast<void>(voutCreateDir(folder));
    return folder;
}

OdAnsiString AppCallback::queryTempPath() {
    return tempFolder();
}

OdAnsiString AppCallback::queryDocumentPath() {
    return documentFolder();
}

}  // namespace vemoapp
