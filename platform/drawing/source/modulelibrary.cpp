#include "modulelibrary.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include <cerrno>
#include <map>
#include <system_error>

#include "moduleplace.h"
#include "moduleversion.h"

namespace {

OdString loaderWords() {
    const char* words = dlerror();
    return OdUtf8StringToOdString(words ? words : "no reason given");
}

std::map<void*, OdRxModuleLibrary>& records() {
    static auto* const all = new std::map<void*, OdRxModuleLibrary>;
    return *all;
}

OdRxModuleLibrary* recordOf(void* handle, const OdString& fileName) {
    return &records()
                .try_emplace(handle, OdRxModuleLibrary{handle, bareFileName(fileName)})
                .first->second;
}

// A library that was taken once stays taken, whatever stands in its file's place by now.
OdRxModuleLibrary* openedBefore(const OdAnsiString& name) {
    // For a bare name the loader would go through all of its places.
    if (records().empty()) {
        return nullptr;
    }
    void* handle = dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    const auto found = handle ? records().find(handle) : records().end();
    return found == records().end() ? nullptr : &found->second;
}

OdString fileOfLibrary(void* handle) {
    link_map* map = nullptr;
    const bool known = dlinfo(handle, RTLD_DI_LINKMAP, &map) == 0;
    return known ? OdUtf8StringToOdString(map->l_name) : OdString();
}

bool isThere(const OdAnsiString& path) {
    struct stat status {};
    return stat(path, &status) == 0;
}

// Of a bare name the loader alone knows the places. Its words name the file that wasn't there,
// which may also be a library that the one asked for needs.
bool namesMissingFile(const OdString& reason, const OdString& fileName) {
    const OdString missing = OdUtf8StringToOdString(std::system_category().message(ENOENT));
    return reason.view().starts_with((fileName + L": ").view()) &&
           reason.view().ends_with(missing.view());
}

LibraryOpening openFile(const OdString& path, const OdString& askedFor) {
    if (const OdString refusal = moduleRefusal(path); !refusal.isEmpty()) {
        return {nullptr, true, refusal};
    }
    const OdAnsiString name = OdStringToUtf8String(path);
    void* handle = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const OdString reason = loaderWords();
        return {nullptr, isThere(name), reason};
    }
    return {recordOf(handle, askedFor), true, OdString()};
}

// The loader's cache knows folders that nobody else does.
LibraryOpening openByLoader(const OdString& fileName) {
    void* handle = dlopen(OdStringToUtf8String(fileName), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const OdString reason = loaderWords();
        return {nullptr, !namesMissingFile(reason, fileName), reason};
    }
    if (const OdString refusal = moduleRefusal(fileOfLibrary(handle)); !refusal.isEmpty()) {
        return {nullptr, true, refusal};
    }
    return {recordOf(handle, fileName), true, OdString()};
}

const link_map* libraryOfAddress(void* address) {
    Dl_info info{};
    link_map* map = nullptr;
    const bool known =
        dladdr1(address, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) != 0;
    return known ? map : nullptr;
}

}  // namespace

OdString bareFileName(const OdString& path) {
    return path.mid(path.reverseFind(L'/') + 1);
}

LibraryOpening openModuleLibrary(const OdString& fileName) {
    // The loader takes the empty name for the program itself.
    if (fileName.isEmpty()) {
        return {nullptr, false, L"no file name"};
    }
    if (OdRxModuleLibrary* library = openedBefore(OdStringToUtf8String(fileName))) {
        return {library, true, OdString()};
    }
    if (fileName.find(L'/') >= 0) {
        return openFile(fileName, fileName);
    }
    const LoaderPlace place = placeAmongLoaderFolders(fileName);
    if (!place.path.isEmpty()) {
        return openFile(place.path, fileName);
    }
    return place.refusal.isEmpty() ? openByLoader(fileName)
                                   : LibraryOpening{nullptr, true, place.refusal};
}

OdRxModuleEntry moduleEntryOf(const OdRxModuleLibrary& library, OdString& reason) {
    void* entry = dlsym(library.handle, ODRX_MODULE_ENTRY_NAME);
    if (!entry) {
        reason = loaderWords();
        return nullptr;
    }
    // The loader also looks into the libraries that this one needs, and those may be modules.
    link_map* own = nullptr;
    if (dlinfo(library.handle, RTLD_DI_LINKMAP, &own) != 0 || own != libraryOfAddress(entry)) {
        reason = L"no module: its entry belongs to a library that it needs";
        return nullptr;
    }
    return reinterpret_cast<OdRxModuleEntry>(entry);
}
