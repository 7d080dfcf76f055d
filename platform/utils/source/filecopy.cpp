// Making folders and copying. A copied file appears whole or not at all; what fails is passed over,
// and the rest is copied.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "folderreader.h"
#include "pathtext.h"
#include "utils/paths.h"

namespace fs = std::filesystem;

namespace {

bool isSameFile(const std::string& a, const std::string& b) {
    std::error_code ignored;
    return fs::equivalent(a, b, ignored);
}

bool makeFolders(const std::string& path) {
    std::error_code ignored;
    fs::create_directories(path, ignored);
    return kindAt(path) == EntryKind::kFolder;
}

/// Into a temporary file beside the target, which then takes its name.
bool copyFile(const std::string& source, const std::string& target) {
    if (isSameFile(source, target)) {
        return true;
    }
    std::string temporary = joinPath(fs::path(target).parent_path().native(), ".vemocopy-XXXXXX");
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    ::close(descriptor);
    std::error_code error;
    fs::copy_file(source, temporary, fs::copy_options::overwrite_existing, error);
    if (!error && std::rename(temporary.c_str(), target.c_str()) == 0) {
        return true;
    }
    ::unlink(temporary.c_str());
    return false;
}

class TreeCopy {
  public:
    /// True when everything was copied.
    bool run(const std::string& source, const std::string& target);

  private:
    struct Folder {
        std::string source;
        std::string target;
        std::size_t level;
    };
    struct Entry {
        std::string name;
        EntryKind kind;
    };

    void copyFolder(const Folder& folder);
    bool enterTarget(const std::string& target, mode_t sourceMode);
    void copyEntry(const Folder& folder, const Entry& entry);
    void setModes();

    std::vector<Folder> pending;
    FolderChain chain;
    // Folders that are written to are not read from: a target within the source ends there.
    std::set<EntryId> written;
    std::vector<std::pair<std::string, mode_t>> made;
    bool complete = true;
};

bool TreeCopy::run(const std::string& source, const std::string& target) {
    pending.push_back({source, target, 0});
    while (!pending.empty()) {
        const Folder folder = std::move(pending.back());
        pending.pop_back();
        copyFolder(folder);
    }
    setModes();
    return complete;
}

void TreeCopy::copyFolder(const Folder& folder) {
    FolderReader reader(folder.source);
    if (!reader.isOpen()) {
        complete = false;
        return;
    }
    if (written.contains(reader.id()) || !chain.enter(folder.level, reader.id())) {
        return;
    }
    if (isSameFile(folder.source, folder.target)) {
        return;
    }
    // All entries are read before the first is copied, which may well be into this very folder.
    std::vector<Entry> entries;
    while (reader.next()) {
        entries.push_back({std::string(reader.name()), reader.kind()});
    }
    if (!enterTarget(folder.target, reader.mode())) {
        complete = false;
        return;
    }
    for (const Entry& entry : entries) {
        copyEntry(folder, entry);
    }
}

bool TreeCopy::enterTarget(const std::string& target, mode_t sourceMode) {
    const bool isNew = kindAt(target) == EntryKind::kNothing;
    if (!makeFolders(target)) {
        return false;
    }
    if (isNew) {
        made.emplace_back(target, sourceMode);
    }
    written.insert(idAt(target));
    return true;
}

void TreeCopy::copyEntry(const Folder& folder, const Entry& entry) {
    std::string source = joinPath(folder.source, entry.name);
    std::string target = joinPath(folder.target, entry.name);
    if (entry.kind == EntryKind::kFolder) {
        pending.push_back({std::move(source), std::move(target), folder.level + 1});
    } else if (entry.kind != EntryKind::kFile || !copyFile(source, target)) {
        complete = false;
    }
}

// Last of all and from below, since a folder may come from one that can't be written to.
void TreeCopy::setModes() {
    std::reverse(made.begin(), made.end());
    for (const auto& [path, mode] : made) {
        ::chmod(path.c_str(), mode);
    }
}

}  // namespace

bool voutCreateDir(const OdAnsiString& path) {
    return makeFolders(path.str());
}

bool voutCopyFile(const OdAnsiString& source, const OdAnsiString& target) {
    if (source.isEmpty() || target.isEmpty()) {
        return false;
    }
    const std::string from = absolutePath(source.view());
    const std::string to = absolutePath(target.view());
    switch (kindAt(from)) {
        case EntryKind::kFolder:
            return TreeCopy().run(from, to);
        case EntryKind::kFile:
            return makeFolders(fs::path(to).parent_path().native()) && copyFile(from, to);
        default:
            return false;
    }
}
