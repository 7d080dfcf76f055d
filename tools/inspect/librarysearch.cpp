#include "librarysearch.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace inspect {

namespace {

namespace fs = std::filesystem;

// The parts of a list of folders. An empty part is the working folder, in an empty list there is
// none.
std::vector<std::string> partsOf(const std::string& list, const char* separators) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (!list.empty() && start <= list.size()) {
        const std::size_t end = std::min(list.find_first_of(separators, start), list.size());
        parts.push_back(end == start ? "." : list.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

std::string folderOf(const std::string& path) {
    std::error_code error;
    return fs::absolute(path, error).parent_path().string();
}

std::string withOrigin(std::string folder, const std::string& origin) {
    for (const std::string variable : {"${ORIGIN}", "$ORIGIN"}) {
        for (std::size_t at = folder.find(variable); at != folder.npos;
             at = folder.find(variable, at + origin.size())) {
            folder.replace(at, variable.size(), origin);
        }
    }
    return folder;
}

std::vector<std::string> namedFolders(const OdAnsiString& list, const LibraryFile& by) {
    std::vector<std::string> folders;
    for (const std::string& part : partsOf(list.str(), ":")) {
        if (std::string folder = withOrigin(part, folderOf(by.path));
            folder.find("$LIB") == folder.npos && folder.find("$PLATFORM") == folder.npos) {
            folders.push_back(std::move(folder));
        }
    }
    return folders;
}

LibraryFile read(const std::string& path) {
    return {path, odReadModuleFile(OdUtf8StringToOdString(path)), nullptr, false};
}

bool isThere(const std::string& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

// Among the folders the loader passes over files of other architectures, and fails with a file that
// it can't make out.
bool endsSearch(const LibraryFile& file) {
    return !file.info.isElf || file.info.isOwnArchitecture;
}

// Asking for what is mapped already runs nothing.
std::optional<std::string> mappedFile(const std::string& name) {
    void* handle = dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (!handle) {
        return std::nullopt;
    }
    link_map* map = nullptr;
    const bool known = dlinfo(handle, RTLD_DI_LINKMAP, &map) == 0;
    std::string path = known ? map->l_name : "";
    dlclose(handle);
    return path;
}

}  // namespace

LibrarySearch::LibrarySearch() {
    std::error_code error;
    program = read("/proc/self/exe");
    program.path = fs::read_symlink("/proc/self/exe", error).string();
    if (const char* list = std::getenv("LD_LIBRARY_PATH")) {
        environmentFolders = partsOf(list, ":;");
    }
    const std::string triplet = architecture() + "-linux-gnu";
    defaultFolders = {"/lib/" + triplet, "/usr/lib/" + triplet, "/lib64", "/usr/lib64", "/lib",
                      "/usr/lib"};
}

LibrarySearch::Folders LibrarySearch::foldersFor(const LibraryFile& neededBy) const {
    Folders folders;
    const auto add = [&](const Folders& more) {
        folders.insert(folders.end(), more.begin(), more.end());
    };
    // A file that names folders for itself alone isn't helped by those of others.
    if (neededBy.info.runPath.isEmpty()) {
        for (const LibraryFile* file = &neededBy; file; file = file->neededBy) {
            if (file->info.runPath.isEmpty()) {
                add(namedFolders(file->info.rPath, *file));
            }
        }
        if (program.info.runPath.isEmpty()) {
            add(namedFolders(program.info.rPath, program));
        }
    }
    add(environmentFolders);
    add(namedFolders(neededBy.info.runPath, neededBy));
    return folders;
}

std::optional<LibraryFile> LibrarySearch::find(const std::string& name,
                                               const LibraryFile& neededBy) const {
    if (const auto mapped = mappedFile(name)) {
        LibraryFile found = read(*mapped);
        found.isMapped = true;
        return found;
    }
    std::vector<std::string> candidates;
    const auto addFolders = [&](const Folders& folders) {
        for (const std::string& folder : folders) {
            candidates.push_back((fs::path(folder) / name).string());
        }
    };
    if (name.find('/') != name.npos) {
        candidates.push_back(withOrigin(name, folderOf(neededBy.path)));
    } else {
        addFolders(foldersFor(neededBy));
        const std::vector<std::string>& cached = cache.filesOf(name);
        candidates.insert(candidates.end(), cached.begin(), cached.end());
        addFolders(defaultFolders);
    }
    for (const std::string& candidate : candidates) {
        if (!isThere(candidate)) {
            continue;
        }
        if (LibraryFile found = read(candidate); endsSearch(found)) {
            return found;
        }
    }
    return std::nullopt;
}

}  // namespace inspect
