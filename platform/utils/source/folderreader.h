// Reading folders: entries in the order of the file system, with what they are at no more cost than
// needed.
#pragma once

#include <dirent.h>
#include <sys/stat.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "filedescriptor.h"

/// What stands at a path, symbolic links followed. A link that leads nowhere is nothing.
enum class EntryKind { kNothing, kFile, kFolder, kOther };

/// A file or folder, whatever its path is: its device and its number there.
using EntryId = std::pair<dev_t, ino_t>;

EntryKind kindAt(const std::string& path);
EntryId idAt(const std::string& path);

// The system's own listing: the C library's costs three calls to the system more for each folder,
// and start-up lists dozens.
class FolderReader {
  public:
    explicit FolderReader(const std::string& path);

    /// False for what is no folder or can't be read.
    bool isOpen() const { return folder.isOpen(); }
    EntryId id() const;
    mode_t mode() const;

    /// Goes to the next entry; "." and ".." aren't shown. False at the end.
    bool next();
    /// Good until the next call of next.
    std::string_view name() const { return entryName; }
    /// Asks the file system again only for links and where the folder didn't tell.
    EntryKind kind() const;

  private:
    struct Entries {
        alignas(dirent64) char bytes[32768];
    };

    struct stat status() const;
    bool readEntries();

    FileDescriptor folder;
    std::unique_ptr<Entries> entries;
    const char* behindEntry = nullptr;
    const char* end = nullptr;
    const dirent64* entry = nullptr;
    std::string_view entryName;
};

/// The folders from the top of a walk down to the one that it is in.
class FolderChain {
  public:
    /// Steps into a folder at the level, 0 being the top. False when the folder is in the chain
    /// already: a link led back.
    bool enter(std::size_t level, EntryId folder);

  private:
    std::vector<EntryId> folders;
};
