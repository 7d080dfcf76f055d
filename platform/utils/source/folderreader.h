// Reading folders: entries in the order of the file system, with what they are at no more cost than
// needed.
#pragma once

#include <dirent.h>
#include <sys/stat.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What stands at a path, symbolic links followed. A link that leads nowhere is nothing.
enum class EntryKind { kNothing, kFile, kFolder, kOther };

/// A file or folder, whatever its path is: its device and its number there.
using EntryId = std::pair<dev_t, ino_t>;

EntryKind kindAt(const std::string& path);
EntryId idAt(const std::string& path);

class FolderReader {
  public:
    explicit FolderReader(const std::string& path);
    FolderReader(const FolderReader&) = delete;
    FolderReader& operator=(const FolderReader&) = delete;
    ~FolderReader();

    /// False for what is no folder or can't be read.
    bool isOpen() const { return stream != nullptr; }
    EntryId id() const;
    mode_t mode() const { return status.st_mode & 07777; }

    /// Goes to the next entry; "." and ".." aren't shown. False at the end.
    bool next();
    /// Good until the next call of next.
    std::string_view name() const { return entryName; }
    /// Asks the file system again only for links and where the folder didn't tell.
    EntryKind kind() const;

  private:
    DIR* stream = nullptr;
    const dirent* entry = nullptr;
    std::string_view entryName;
    struct stat status {};
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
