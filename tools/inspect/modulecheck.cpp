#include "modulecheck.h"

#include <deque>
#include <filesystem>
#include <set>

#include "librarysearch.h"
#include "symbolscope.h"

namespace inspect {

namespace {

std::string utf8(const OdString& text) {
    return OdStringToUtf8String(text).str();
}

class Checker {
  public:
    explicit Checker(ModuleCheck& result) : check(result) {}

    void run();

  private:
    bool isLibraryForThisMachine();
    void checkInterfaces();
    void checkLibraries();
    void addLibrary(const std::string& name, const LibraryFile& neededBy);
    void checkSymbols();
    void addMissing(const std::string& name, const LibraryFile& neededBy, const std::string& what);
    std::string userOf(const LibraryFile& file) const;
    void object(const std::string& reason) { check.reasons.push_back(reason); }
    const OdRxModuleFileInfo& module() const { return files.front().info; }

    ModuleCheck& check;
    LibrarySearch search;
    // The module and all libraries that it needs, breadth first as the loader goes. They stay where
    // they are, since they point to each other.
    std::deque<LibraryFile> files;
    std::set<std::string> seenNames;
    std::set<std::string> seenPaths;
};

void Checker::run() {
    files.push_back(
        {check.path, odReadModuleFile(OdUtf8StringToOdString(check.path)), nullptr, false});
    if (!module().placeRefused.isEmpty()) {
        object(utf8(module().placeRefused));
    }
    if (isLibraryForThisMachine()) {
        checkInterfaces();
        checkLibraries();
        if (check.missingLibraries.empty()) {
            checkSymbols();
        }
        check.hasEntry = module().definesEntry;
        if (!check.hasEntry) {
            object("it defines no " ODRX_MODULE_ENTRY_NAME ", so it is no module");
        }
    }
    check.ok = check.reasons.empty();
}

bool Checker::isLibraryForThisMachine() {
    check.architecture = module().architecture.str();
    check.isOwnArchitecture = module().isOwnArchitecture;
    if (!module().isElf) {
        object("it can't be read as a library: " + utf8(module().fault));
    } else if (!check.isOwnArchitecture) {
        object("it is for " + check.architecture + ", and this is " + search.architecture());
    } else if (!module().fault.isEmpty()) {
        object("it is damaged: " + utf8(module().fault));
    } else if (!module().isSharedObject) {
        object("it is no shared object");
    } else {
        return true;
    }
    return false;
}

void Checker::checkInterfaces() {
    const OdRxInterfaceVersion own = odInterfaceVersion();
    check.interfaceVersion = module().stamp;
    check.interfaceAccepted = !module().stamp || odAcceptsInterfaces(*module().stamp, own);
    if (!check.interfaceAccepted) {
        object("it was " + utf8(odInterfacesRefused(*module().stamp, own)));
    }
}

void Checker::checkLibraries() {
    // The list grows while it is gone through, which no iterator would outlive.
    std::size_t next = 0;
    while (next < files.size()) {
        const LibraryFile& file = files[next++];
        for (const OdAnsiString& name : file.info.needed) {
            if (seenNames.insert(name.str()).second) {
                addLibrary(name.str(), file);
            }
        }
    }
}

void Checker::addLibrary(const std::string& name, const LibraryFile& neededBy) {
    auto found = search.find(name, neededBy);
    if (!found) {
        addMissing(name, neededBy, "which isn't found");
        return;
    }
    const OdRxModuleFileInfo& info = found->info;
    if (!info.fault.isEmpty() || !info.isSharedObject) {
        addMissing(name, neededBy,
                   "and " + found->path + " can't be loaded: " +
                       (info.fault.isEmpty() ? "no shared object" : utf8(info.fault)));
        return;
    }
    std::error_code error;
    const std::string path = std::filesystem::canonical(found->path, error).string();
    if (error || seenPaths.insert(path).second) {
        found->neededBy = &neededBy;
        files.push_back(std::move(*found));
    }
}

void Checker::addMissing(const std::string& name, const LibraryFile& neededBy,
                         const std::string& what) {
    check.missingLibraries.push_back(name);
    object(userOf(neededBy) + " needs " + name + ", " + what);
}

std::string Checker::userOf(const LibraryFile& file) const {
    return &file == &files.front() ? "it" : file.path;
}

// The loader resolves the names of every library that it maps for the module, and fails for one.
void Checker::checkSymbols() {
    SymbolScope scope;
    for (const LibraryFile& file : files) {
        scope.add(file.info);
    }
    std::set<std::string> seen;
    for (const LibraryFile& file : files) {
        if (file.isMapped) {
            continue;
        }
        for (const OdRxModuleSymbol& symbol : file.info.undefined) {
            if (symbol.isWeak || scope.defines(symbol)) {
                continue;
            }
            const std::string name = readableName(symbol);
            if (seen.insert(name).second) {
                check.unresolvedSymbols.push_back(name);
                object(userOf(file) + " uses " + name + ", which nobody defines");
            }
        }
    }
}

}  // namespace

ModuleCheck checkModule(const std::string& path) {
    ModuleCheck check;
    check.path = path;
    Checker(check).run();
    return check;
}

}  // namespace inspect
