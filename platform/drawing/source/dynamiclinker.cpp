#include "dynamiclinker.h"

#include <sys/stat.h>

#include <algorithm>

namespace {

OdString wordsOf(const std::exception_ptr& fault) {
    try {
        std::rethrow_exception(fault);
    } catch (const OdError& error) {
        return error.description();
    } catch (const std::exception& error) {
        return OdUtf8StringToOdString(error.what());
    } catch (...) {
        return L"unknown exception";
    }
}

bool isFile(const OdString& path) {
    struct stat status {};
    return stat(OdStringToUtf8String(path), &status) == 0 && !S_ISDIR(status.st_mode);
}

// The file names that a module's name may stand for.
OdStringArray fileNamesOf(const OdString& name) {
    OdStringArray names;
    names.append(name);
    if (!name.isEmpty() && name.findOneOf(L"./") < 0) {
        names.append(L"lib" + name + L".so");
    }
    return names;
}

}  // namespace

DynamicLinker::Place DynamicLinker::find(const OdRxModuleLibrary* library) {
    return std::find_if(modules.begin(), modules.end(),
                        [&](const Loaded& loaded) { return loaded.library == library; });
}

const DynamicLinker::Loaded* DynamicLinker::find(const OdString& name) const {
    for (const OdString& fileName : fileNamesOf(name)) {
        const auto found = std::find_if(modules.begin(), modules.end(), [&](const Loaded& loaded) {
            return loaded.library->fileName == fileName;
        });
        if (found != modules.end()) {
            return &*found;
        }
    }
    return nullptr;
}

OdRxModule* DynamicLinker::moduleOfLibrary(OdRxModuleLibrary* library, bool addReference) {
    if (!library) {
        return nullptr;
    }
    OdRxModulePtr module;
    if (const auto loaded = find(library); loaded != modules.end()) {
        module = loaded->module;
    } else if (find(library->fileName)) {
        noteFailure(library->fileName, L"another module of this name is loaded");
    } else {
        module = makeModule(*library);
        if (!module.isNull()) {
            initModule(library, module);
        }
    }
    return addReference ? module.detach() : module.get();
}

OdRxModulePtr DynamicLinker::makeModule(const OdRxModuleLibrary& library) {
    OdString reason;
    const OdRxModuleEntry entry = moduleEntryOf(library, reason);
    OdRxModulePtr module(entry ? entry(library.fileName) : nullptr, kOdRxObjAttach);
    if (module.isNull()) {
        noteFailure(library.fileName, entry ? OdString(L"its entry made no module") : reason);
    }
    return module;
}

void DynamicLinker::initModule(OdRxModuleLibrary* library, const OdRxModulePtr& module) {
    modules.push_back({library, module});
    try {
        module->initApp();
    } catch (...) {
        noteFailure(library->fileName, wordsOf(std::current_exception()));
        modules.erase(find(library));
        throw;
    }
    // What initApp itself loaded came up first, and has to outlive this module.
    const Place loaded = find(library);
    loaded->busy = false;
    std::rotate(loaded, loaded + 1, modules.end());
}

void DynamicLinker::endModule(OdRxModuleLibrary* library) {
    const Place loaded = find(library);
    const OdRxModulePtr module = loaded->module;
    loaded->busy = true;
    try {
        module->uninitApp();
    } catch (...) {
        modules.erase(find(library));
        throw;
    }
    modules.erase(find(library));
}

OdRxModulePtr DynamicLinker::loadModule(const OdString& name, bool silent) {
    if (OdRxModulePtr loaded = loadedModule(name)) {
        return loaded;
    }
    LibraryOpening opening;
    for (const OdString& fileName : fileNamesOf(name)) {
        if (!opening.found) {
            opening = open(fileName);
        }
    }
    if (!opening.library) {
        noteFailure(name, opening.reason);
    } else if (OdRxModule* module = moduleOfLibrary(opening.library, true)) {
        return OdRxModulePtr(module, kOdRxObjAttach);
    }
    if (silent) {
        return nullptr;
    }
    throw OdError_FileException(eCantOpenFile, name, failureList.last().reason);
}

bool DynamicLinker::unloadModule(const OdString& name) {
    const Loaded* loaded = find(name);
    if (!loaded || loaded->busy) {
        return false;
    }
    endModule(loaded->library);
    return true;
}

OdRxModulePtr DynamicLinker::loadedModule(const OdString& name) const {
    const Loaded* loaded = find(name);
    return loaded ? loaded->module : nullptr;
}

OdArray<OdRxModulePtr> DynamicLinker::loadedModules() const {
    OdArray<OdRxModulePtr> list;
    for (const Loaded& loaded : modules) {
        list.append(loaded.module);
    }
    return list;
}

void DynamicLinker::addModuleFolder(const OdString& folder) {
    if (folder.find(L'/') == 0 && !folders.contains(folder)) {
        folders.append(folder);
    }
}

LibraryOpening DynamicLinker::open(const OdString& fileName) const {
    const bool isAbsolute = fileName.find(L'/') == 0;
    for (unsigned int i = 0; !isAbsolute && !fileName.isEmpty() && i < folders.size(); ++i) {
        const OdString path = folders.at(i) + L"/" + fileName;
        if (isFile(path)) {
            return openModuleLibrary(path);
        }
    }
    // To the system's loader it would be a file below the working folder.
    if (fileName.find(L'/') > 0) {
        return {nullptr, false, L"no such file in a module folder; other places need a whole path"};
    }
    return openModuleLibrary(fileName);
}

void DynamicLinker::noteFailure(const OdString& name, const OdString& reason) {
    if (!failureList.isEmpty() && failureList.last().moduleName == name &&
        failureList.last().reason == reason) {
        return;
    }
    failureList.append({name, reason});
}

std::exception_ptr DynamicLinker::endModules() {
    std::exception_ptr first;
    while (!modules.empty()) {
        try {
            endModule(modules.back().library);
        } catch (...) {
            first = first ? first : std::current_exception();
        }
    }
    return first;
}
