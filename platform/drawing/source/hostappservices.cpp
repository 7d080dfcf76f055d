// The answers of host services that know no host: no faces, no user, no modeler of their own.
#include "drawing/hostappservices.h"

#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "drawing/rxdictionary.h"
#include "drawing/rxobjectimpl.h"
#include "drawing/rxsystemservices.h"
#include "fontfolders.h"

namespace {

OdRxObjectPtr makeUndoController() {
    return OdRxObjectImpl<OdDbUndoController>::createObject();
}

OdStringArray& fontFoldersOfTool() {
    static OdStringArray folders;
    return folders;
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The names in a folder that fit the mask, files and folders alike, in byte order.
std::vector<std::string> namesFitting(const OdAnsiString& folder, const OdAnsiString& mask) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder), closedir);
    while (const dirent* entry = listing ? readdir(listing.get()) : nullptr) {
        if (fnmatch(mask, entry->d_name, FNM_NOESCAPE) == 0) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

ODRX_DEFINE_MEMBERS(OdDbUndoController, OdRxObject, makeUndoController, L"OdDbUndoController")
ODRX_DEFINE_MEMBERS(OdModelerGeometryBuilder, OdRxObject, nullptr, L"OdModelerGeometryBuilder")
ODRX_DEFINE_MEMBERS(OdDbBaseHostAppServices, OdRxObject, nullptr, L"OdDbBaseHostAppServices")
ODRX_DEFINE_MEMBERS(OdDbHostAppServices, OdDbBaseHostAppServices, nullptr, L"OdDbHostAppServices")

OdStreamBufPtr OdDbBaseHostAppServices::newUndoStream() {
    return newOdMemoryStream();
}

bool OdDbBaseHostAppServices::ttfFileNameByDescriptor(const OdTtfDescriptor& /*description*/,
                                                      OdString& /*fileName*/) {
    return false;
}

OdString OdDbBaseHostAppServices::getAlternateFontName() const {
    return {};
}

OdString OdDbBaseHostAppServices::getFontMapFileName() const {
    return {};
}

OdString OdDbBaseHostAppServices::getSubstituteFont(const OdString& /*fontName*/,
                                                    OdFontType /*fontType*/) {
    return getAlternateFontName();
}

bool OdDbBaseHostAppServices::getSystemFontFolders(OdStringArray& folders) const {
    if (!fontFoldersOfTool().isEmpty()) {
        folders.append(fontFoldersOfTool());
        return true;
    }
    const std::vector<std::string> found = systemFontFolders();
    for (const std::string& folder : found) {
        folders.append(OdUtf8StringToOdString(folder));
    }
    return !found.empty();
}

void odSetSystemFontFolders(const OdStringArray& folders) {
    fontFoldersOfTool() = folders;
}

void OdDbBaseHostAppServices::collectFilePathsInDirectory(OdStringArray& result,
                                                          const OdString& directory,
                                                          const OdString& mask) {
    const OdAnsiString folder = OdStringToUtf8String(directory);
    const std::string prefix = folder.view().ends_with('/') ? folder.str() : folder.str() + '/';
    for (const std::string& name : namesFitting(folder, OdStringToUtf8String(mask))) {
        if (!isFolder(prefix + name)) {
            result.append(OdUtf8StringToOdString(prefix + name));
        }
    }
}

OdString OdDbBaseHostAppServices::fileDialog(int /*flags*/, const OdString& /*caption*/,
                                             const OdString& /*extension*/,
                                             const OdString& /*filter*/) {
    return {};
}

OdString OdDbBaseHostAppServices::getTempPath() const {
    const char* named = std::getenv("TMPDIR");
    return named && *named ? OdUtf8StringToOdString(named) : OdString(L"/tmp");
}

OdResult OdDbBaseHostAppServices::initializeModelerBuilder(OdRxObject* builder,
                                                           std::uint32_t entityType) {
    const OdRxDictionaryPtr services = odrxServiceDictionary();
    const OdRxObjectPtr registered =
        services.isNull() ? nullptr : services->getAt(L"OdModelerGeometryCreator");
    if (registered.isNull()) {
        return eNoInterface;
    }
    const OdSmartPtr<OdRxClass> creator(registered);
    const OdRxObjectPtr created = creator->create();
    if (created.isNull()) {
        return eNoInterface;
    }
    return OdSmartPtr<OdModelerGeometryBuilder>(created)->initializeBuilder(builder, entityType);
}

bool OdDbBaseHostAppServices::getEnv(const OdString& name, OdString& value) {
    const char* found = std::getenv(OdStringToUtf8String(name));
    if (found) {
        value = OdUtf8StringToOdString(found);
    }
    return found != nullptr;
}

bool OdDbBaseHostAppServices::setEnv(const OdString& name, const OdString& value) {
    return setenv(OdStringToUtf8String(name), OdStringToUtf8String(value), 1) == 0;
}

void OdDbHostAppServices::warning(const char* group, OdResult code, OdDbObjectId /*object*/) {
    OdRxSystemServices* services = odrxSystemServices();
    warning(group, services ? services->formatMessage(static_cast<unsigned int>(code), nullptr)
                            : OdError(code).description());
}

bool OdDbHostAppServices::getPassword(const OdString& /*drawingName*/, bool /*isXref*/,
                                      OdPassword& /*password*/) {
    return false;
}

OdString OdDbHostAppServices::getSubstituteFontByChar(const OdString& /*fontName*/,
                                                      OdChar /*character*/,
                                                      OdDbBaseDatabase* /*database*/) {
    return {};
}

OdDbDatabasePtr OdDbHostAppServices::createDatabase(bool /*createDefault*/, int measurement) {
    if (!OdDbDatabase::desc()) {
        throw OdError(eNotInitializedYet);
    }
    OdDbDatabasePtr database = OdRxObjectImpl<OdDbDatabase>::createObject();
    database->setAppServices(this);
    database->setMeasurement(measurement);
    return database;
}

OdRxClass* OdDbHostAppServices::databaseClass() const {
    return OdDbDatabase::desc();
}
