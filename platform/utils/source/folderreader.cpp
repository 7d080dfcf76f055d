#include "folderreader.h"

#include <fcntl.h>
#include <unistd.h>

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

FolderReader::FolderReader(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    if (::fstat(descriptor, &status) == 0) {
        stream = ::fdopendir(descriptor);
    }
    if (!stream) {
        ::close(descriptor);
    }
}

FolderReader::~FolderReader() {
    if (stream) {
        ::closedir(stream);
    }
}

EntryId FolderReader::id() const {
    return {status.st_dev, status.st_ino};
}

bool FolderReader::next() {
    do {
        entry = ::readdir(stream);
        entryName = entry ? entry->d_name : std::string_view();
    } while (entryName == "." || entryName == "..");
    return entry != nullptr;
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
    return ::fstatat(::dirfd(stream), entry->d_name, &found, 0) == 0 ? kindOf(found)
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
