#include "folderreader.h"

#include <fcntl.h>

#include <algorithm>

namespace {

EntryKind kindOf(const struct stat& status) {
    if (S_ISREG(status.st_mode)) {
        return EntryKind::kFile;
    }
    return S_ISDIR(status.st_mode) ? EntryKind::kFolder : EntryKind::kOther;
}

}  // namespace

EntryKind kindAt(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? kindOf(status) : EntryKind::kNothing;
}

EntryId idAt(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? EntryId{status.st_dev, status.st_ino} : EntryId{};
}

FolderReader::FolderReader(const std::string& path)
    : folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

struct stat FolderReader::status() const {
    struct stat found {};
    ::fstat(folder.get(), &found);
    return found;
}

EntryId FolderReader::id() const {
    const struct stat found = status();
    return {found.st_dev, found.st_ino};
}

mode_t FolderReader::mode() const {
    return status().st_mode & 07777;
}

bool FolderReader::next() {
    do {
        if (behindEntry == end && !readEntries()) {
            return false;
        }
        entry = reinterpret_cast<const dirent64*>(behindEntry);
        behindEntry += entry->d_reclen;
        entryName = entry->d_name;
    } while (entryName == "." || entryName == "..");
    return true;
}

bool FolderReader::readEntries() {
    if (!entries) {
        // NOLINTNEXTLINE(modernize-make-unique): that would fill it with zeros.
        entries.reset(new Entries);
    }
    const ssize_t size = ::getdents64(folder.get(), entries->bytes, sizeof entries->bytes);
    behindEntry = entries->bytes;
    end = behindEntry + std::max<ssize_t>(size, 0);
    return size > 0;
}

EntryKind FolderReader::kind() const {
    switch (entry->d_type) {
        case DT_REG:
            return EntryKind::kFile;
        case DT_DIR:
            return EntryKind::kFolder;
        case DT_LNK:
        case DT_UNKNOWN:
            break;
        default:
            return EntryKind::kOther;
    }
    struct stat found {};
    return ::fstatat(folder.get(), entry->d_name, &found, 0) == 0 ? kindOf(found)
                                                                  : EntryKind::kNothing;
}

bool FolderChain::enter(std::size_t level, EntryId folder) {
    folders.resize(level);
    if (std::find(folders.begin(), folders.end(), folder) != folders.end()) {
        return false;
    }
    folders.push_back(folder);
    return true;
}
