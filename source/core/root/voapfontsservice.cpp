#include "voapfontsservice.h"

#include <utils/paths.h>

#include "core/voexports.h"
#include "core/voservicekeys.h"
#include "rootservices.h"
#include "treehelpers.h"

namespace vosi {

namespace {

using Folders = OdArray<OdAnsiString>;

// Hints that select the index of fonts instead of a list of folders.
bool isFontHint(int hint) {
    return hint >= OdDbBaseHostAppServices::kFontFile &&
           hint <= OdDbBaseHostAppServices::kTrueTypeFontFile;
}

const char* pathsKeyOfHint(int hint) {
    switch (hint) {
        case OdDbBaseHostAppServices::kEmbeddedImageFile:
            return "paths/EmbeddedImagePath";
        case OdDbBaseHostAppServices::kXRefDrawing:
            return "paths/xRefPaths";
        case OdDbBaseHostAppServices::kPatternFile:
            return "paths/pattenPaths";
        case OdDbBaseHostAppServices::kFontMapFile:
            return "paths/fontmapFile";
        case OdDbBaseHostAppServices::kTextureMapFile:
            return "paths/texturePaths";
        default:
            return "paths/supportPaths";
    }
}

bool isAbsolute(const OdAnsiString& name) {
    return name.findOneOf("/\\") == 0 || name.findOneOf(":") > 0;
}

OdAnsiString drawingFolderOf(OdDbBaseDatabase* database) {
    if (!database) {
        return OdAnsiString();
    }
    const OdDbBaseDatabasePEPtr extension{OdRxObjectPtr(database)};
    return voutGetParentDir(OdStringToUtf8String(extension->databaseFileName(database)));
}

OdSmartPtr<VosiDocument> documentOf(OdDbBaseDatabase* database) {
    const auto manager = optionalService<VosiDocMgrSvr>(kDocMgrKey);
    if (manager.isNull()) {
        return nullptr;
    }
    for (const auto iterator = manager->newDocumentIterator(); !iterator->done();
         iterator->next()) {
        OdSmartPtr<VosiDocument> document(iterator->object());
        if (document->documentDatabase().get() == database) {
            return document;
        }
    }
    return nullptr;
}

OdAnsiString folderOf(const OdSmartPtr<VosiDocument>& document) {
    return document.isNull() ? OdAnsiString() : OdStringToUtf8String(document->documentFolder());
}

void addFolder(Folders& folders, const OdAnsiString& folder) {
    if (!folder.isEmpty() && !folders.contains(folder)) {
        folders.append(folder);
    }
}

OdString firstMatch(const OdAnsiString& folder, const OdAnsiString& fileName) {
    Folders matches;
    voutGlobNoCaseSensitive2(folder, fileName, matches, 1);
    return matches.isEmpty() ? OdString() : OdUtf8StringToOdString(matches.first());
}

OdString firstMatchBelow(const Folders& folders, const OdAnsiString& folderPart,
                         const OdAnsiString& fileName) {
    for (const OdAnsiString& folder : folders) {
        // A folder and the name's own folder part get no separator between them: a drawing's folder
        // ends in one, and configured folders have always been taken as they are written.
        if (OdString found = firstMatch(folder + folderPart, fileName); !found.isEmpty()) {
            return found;
        }
    }
    return OdString();
}

}  // namespace

OdString VoApFontsService::findFile(const OdString& name, OdDbBaseDatabase* database, int hint) {
    if (name.isEmpty()) {
        return name;
    }
    const OdAnsiString drawingFolder = drawingFolderOf(database);
    const bool relative = !isAbsolute(OdStringToUtf8String(name));
    Folders folders;
    if (relative) {
        addFolder(folders, drawingFolder);
        if (OdString found = searchFolders(name, folders); !found.isEmpty()) {
            return found;
        }
    }
    OdString found;
    if (voutIsExistFileNoCaseSensitiveW(name, found)) {
        return found;
    }
    if (database && !isFontHint(hint)) {
        addFolder(folders, folderOf(documentOf(database)));
    }
    addPathsForHint(folders, hint);
    return searchFolders(name, folders);
}

OdString VoApFontsService::findFileInDocument(const OdString& name, OdRxObject* document,
                                              int hint) {
    if (name.isEmpty()) {
        return name;
    }
    OdString found;
    if (voutIsExistFileNoCaseSensitiveW(name, found)) {
        return found;
    }
    Folders folders;
    addFolder(folders, folderOf(OdSmartPtr<VosiDocument>(OdRxObjectPtr(document))));
    addPathsForHint(folders, hint);
    return searchFolders(name, folders);
}

void VoApFontsService::scanFonts(int /*flags*/) {}

void VoApFontsService::scanDocumentFonts(OdRxObject* /*document*/) {}

bool VoApFontsService::ttfFileNameByDescriptor(const OdTtfDescriptor& /*descriptor*/,
                                               OdString& /*fileName*/) {
    return false;
}

OdAnsiString VoApFontsService::exeRootPath() {
    return tree::textOr(vo_runtime_config("ExeRootPath"), "");
}

void VoApFontsService::addPathsForHint(OdArray<OdAnsiString>& list, int hint) {
    if (!isFontHint(hint)) {
        voutEnumPaths(vo_runtime_config(pathsKeyOfHint(hint)), list);
    }
}

OdString VoApFontsService::searchFolders(const OdString& name,
                                         const OdArray<OdAnsiString>& folders) {
    const OdAnsiString path = OdStringToUtf8String(name);
    const OdAnsiString fileName = voutGetLastFileNameInPath(path);
    if (isAbsolute(path)) {
        OdString found;
        if (voutIsExistFileNoCaseSensitiveW(name, found)) {
            return found;
        }
    } else if (const OdAnsiString folderPart = voutGetParentDir(path); !folderPart.isEmpty()) {
        OdString found = firstMatchBelow(folders, folderPart, fileName);
        if (!found.isEmpty()) {
            return found;
        }
    }
    return firstMatchBelow(folders, OdAnsiString(), fileName);
}

}  // namespace vosi
