// From a name to a file: as named, in the index of fonts, in the folders of a hint.
#include <utils/paths.h>

#include "core/voexports.h"
#include "core/voservicekeys.h"
#include "core/vosifontlists.h"
#include "rootservices.h"
#include "runobserver.h"
#include "treehelpers.h"
#include "voapfontsservice.h"

namespace vosi {

namespace {

using Folders = OdArray<OdAnsiString>;
using Host = OdDbBaseHostAppServices;

// Hints that select the index of fonts instead of a list of folders.
bool isFontHint(int hint) {
    return hint >= Host::kFontFile && hint <= Host::kTrueTypeFontFile;
}

const char* pathsKeyOfHint(int hint) {
    switch (hint) {
        case Host::kEmbeddedImageFile:
            return "paths/EmbeddedImagePath";
        case Host::kXRefDrawing:
            return "paths/xRefPaths";
        case Host::kPatternFile:
            return "paths/pattenPaths";
        case Host::kFontMapFile:
            return "paths/fontmapFile";
        case Host::kTextureMapFile:
            return "paths/texturePaths";
        default:
            return "paths/supportPaths";
    }
}

bool isAbsolute(const OdAnsiString& name) {
    return name.findOneOf("/\\") == 0 || name.findOneOf(":") > 0;
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
    return run::placeTried(
        folder, matches.isEmpty() ? OdString() : OdUtf8StringToOdString(matches.first()));
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

OdString findInDocument(const OdString& name, VosiDocument* document, const OdChar* key) {
    const OdRxObjectPtr index = documentIndex(document, key);
    return index.isNull()
               ? OdString()
               : run::placeTried("the document's own list of fonts",
                                 findByFileName(name, *static_cast<VosiMapShxFont*>(index.get())));
}

// The file or folder that the name leads to, empty when there is none.
OdString findAsNamed(const OdString& name) {
    OdString found;
    voutIsExistFileNoCaseSensitiveW(name, found);
    return run::placeTried("the name as it stands", found);
}

}  // namespace

OdString VoApFontsService::findFile(const OdString& name, OdDbBaseDatabase* database, int hint) {
    if (name.isEmpty()) {
        return name;
    }
    Folders folders;
    OdString found;
    if (database) {
        const OdDbBaseDatabasePEPtr extension{OdRxObjectPtr(database)};
        if (!isAbsolute(OdStringToUtf8String(name))) {
            const OdString drawing = extension->databaseFileName(database);
            addFolder(folders, voutGetParentDir(OdStringToUtf8String(drawing)));
            if (found = searchFolders(name, folders); !found.isEmpty()) {
                return found;
            }
        }
    }
    if (found = findAsNamed(name); !found.isEmpty()) {
        return found;
    }
    const auto document = database ? documentOf(database) : OdSmartPtr<VosiDocument>();
    if (isFontHint(hint)) {
        if (found = findIndexedFont(name, document.get(), hint); !found.isEmpty()) {
            return found;
        }
    } else {
        addFolder(folders, folderOf(document));
        addPathsForHint(folders, hint);
    }
    return folders.isEmpty() ? OdString() : searchFolders(name, folders);
}

OdString VoApFontsService::findFileInDocument(const OdString& name, OdRxObject* document,
                                              int hint) {
    if (name.isEmpty()) {
        return name;
    }
    OdString found = findAsNamed(name);
    if (!found.isEmpty()) {
        return found;
    }
    const OdSmartPtr<VosiDocument> holder{OdRxObjectPtr(document)};
    Folders folders;
    addFolder(folders, folderOf(holder));
    if (found = findIndexedFont(name, holder.get(), hint); !found.isEmpty()) {
        return found;
    }
    addPathsForHint(folders, hint);
    return searchFolders(name, folders);
}

OdString VoApFontsService::findIndexedFont(const OdString& name, VosiDocument* document, int hint) {
    const bool trueType = hint == Host::kFontFile || hint == Host::kTrueTypeFontFile;
    const bool compiled = hint == Host::kFontFile || hint == Host::kCompiledShapeFile;
    struct List {
        bool wanted;
        const char* place;
        const OdChar* documentKey;
        FileNameIndex& names;
        const OdStringArray& paths;
    };
    const List lists[] = {
        {trueType, "the index of TrueType fonts", kDocumentTtfFilesKey, ttfNames, ttfFiles},
        {compiled, "the index of main SHX fonts", kDocumentMainShxKey, mainShxNames, mainShxFiles},
        {compiled, "the index of big fonts", kDocumentBigShxKey, bigShxNames, bigShxFiles}};
    OdString found;
    for (const List& list : lists) {
        if (list.wanted && found.isEmpty()) {
            found = findInDocument(name, document, list.documentKey);
        }
    }
    for (const List& list : lists) {
        if (list.wanted && found.isEmpty()) {
            found = run::placeTried(list.place, list.names.find(name, list.paths));
        }
    }
    return found;
}

OdAnsiString VoApFontsService::exeRootPath() {
    return tree::textOr(vo_runtime_config("ExeRootPath"), "");
}

void VoApFontsService::addPathsForHint(Folders& list, int hint) {
    if (!isFontHint(hint)) {
        voutEnumPaths(vo_runtime_config(pathsKeyOfHint(hint)), list);
    }
}

OdString VoApFontsService::searchFolders(const OdString& name, const Folders& folders) {
    const OdAnsiString path = OdStringToUtf8String(name);
    const OdAnsiString fileName = voutGetLastFileNameInPath(path);
    if (isAbsolute(path)) {
        OdString found = findAsNamed(name);
        if (!found.isEmpty()) {
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
