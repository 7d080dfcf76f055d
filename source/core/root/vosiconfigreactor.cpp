#include "vosiconfigreactor.h"

#include <utils/paths.h>

#include "core/voexports.h"
#include "core/vosifindfontsvr.h"
#include "pathlists.h"
#include "runobserver.h"
#include "voapfontsservice.h"

namespace vosi {

namespace {

constexpr const char* kFolderLists[] = {"fontPaths",      "supportPaths",         "texturePaths",
                                        "pattenPaths",    "hdidriverPaths",       "plotconfigPaths",
                                        "plotpaperPaths", "plotprintstylesPaths", "templatePaths"};

constexpr const char* kFileLists[] = {"fontmapFile", "alternateFontFile", "substituteFontFile"};

struct UserFolder {
    const char* key;
    /// Below the folder of the executable.
    const char* source;
};

constexpr UserFolder kUserFolders[] = {
    {"plotconfigPaths", "UserDataCache/%LANGUAGE%/Plotters/"},
    {"plotpaperPaths", "UserDataCache/%LANGUAGE%/Papers/"},
    {"plotprintstylesPaths", "UserDataCache/%LANGUAGE%/PrintStyles/"},
    {"supportPaths", "UserDataCache/%LANGUAGE%/Support/"},
    {"templatePaths", "UserDataCache/%LANGUAGE%/Template/"}};

// Done at each start, so that a template of this name in the first template folder comes before the
// one in the user file.
void selectDefaultTemplate() {
    const VoJsonPtr node = vo_user_config("templatePath", 2);
    if (!node) {
        return;
    }
    OdArray<OdAnsiString> folders;
    voutEnumPaths(vo_runtime_config("paths/templatePaths"), folders);
    OdAnsiString path = folders.isEmpty() ? OdAnsiString() : folders.first();
    if (!path.isEmpty() && path.right(1) != "/") {
        path += '/';
    }
    path += "vemoiso.dwt";
    if (voutIsExistFile(path)) {
        // The node and the text in it have the same name.
        node->set_propertys("templatePath", path, false);
        run::note([&] { return "the template of new drawings is " + path; });
    }
}

}  // namespace

void VosiConfigReactor::onMainWindowReady() {
    const VoJsonPtr runtimeRoot = vo_runtime_config("");
    const VoJsonPtr systemRoot = vo_sys_config("");
    for (const char* key : kFolderLists) {
        buildPathList(key, runtimeRoot, systemRoot);
    }
    for (const UserFolder& folder : kUserFolders) {
        seedUserDataDir(folder.key, voutCombinePath("%EXEPATH%", folder.source), systemRoot);
    }
    selectDefaultTemplate();
    for (const char* key : kFileLists) {
        buildPathList(key, runtimeRoot, systemRoot);
    }
    if (fontService) {
        fontService->scanFonts(kScanSystemFolders | kScanConfiguredFolders);
    }
}

void VosiConfigReactor::onAppExiting() {
    if (fontService) {
        VoApFontsService::withdrawFonts(vo_runtime_config(""));
    }
}

void VosiConfigReactor::onSysConfigLoaded() {
    if (fontService) {
        fontService->publishFonts(vo_runtime_config(""));
    }
}

}  // namespace vosi
