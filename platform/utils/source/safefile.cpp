#include "utils/safefile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>

#include "filedescriptor.h"
#include "wholefile.h"

namespace {

namespace fs = std::filesystem;

// What the path leads to through symbolic links, whether it is there or not; empty when the links
// go in a circle.
fs::path targetOf(fs::path path) {
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code noLink;
        const fs::path next = fs::read_symlink(path, noLink);
        if (noLink) {
            return path;
        }
        path = path.parent_path() / next;
    }
    return {};
}

// Hidden, and short enough for the file system however long the target's name is.
fs::path temporaryName(const fs::path& target) {
    constexpr std::size_t mostOfName = 200;
    char suffix[16];
    std::snprintf(suffix, sizeof suffix, ".%08x", std::random_device()());
    return target.parent_path() / ("." + target.filename().string().substr(0, mostOfName) + suffix);
}

// The new content, removed unless it takes its place.
class TemporaryFile {
  public:
    TemporaryFile(const fs::path& target, mode_t mode)
        : name(temporaryName(target)),
          file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode)),
          present(file.isOpen()) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (present) {
            ::unlink(name.c_str());
        }
    }

    bool write(std::string_view text) {
        while (file.isOpen() && !text.empty()) {
            const ssize_t written = ::write(file.get(), text.data(), text.size());
            if (written < 0 && errno != EINTR) {
                return false;
            }
            text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
        return file.isOpen();
    }

    // The owner first, since a change of owner clears bits of the mode. Only the mode is a promise.
    bool resemble(const struct stat& old) {
        [[maybe_unused]] const int result = ::fchown(file.get(), old.st_uid, old.st_gid);
        return ::fchmod(file.get(), old.st_mode & 07777) == 0;
    }

    bool moveTo(const fs::path& target) {
        const bool safe = ::fsync(file.get()) == 0;
        const bool moved = file.close() && safe && std::rename(name.c_str(), target.c_str()) == 0;
        present = !moved;
        return moved;
    }

  private:
    fs::path name;
    FileDescriptor file;
    bool present;
};

// The rename is on disk when its folder is. What can't be flushed has been renamed all the same.
void flushFolder(const fs::path& folder) {
    const FileDescriptor directory(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.isOpen()) {
        ::fsync(directory.get());
    }
}

}  // namespace

bool voutWriteFileSafely(const std::string& path, std::string_view text) {
    // The system would end the path at a NUL and name another file.
    if (path.find('\0') != std::string::npos) {
        return false;
    }
    const fs::path target = targetOf(path);
    if (!target.has_filename()) {
        return false;
    }
    struct stat old {};
    const bool replaces = ::stat(target.c_str(), &old) == 0;
    if (replaces && (!S_ISREG(old.st_mode) || ::access(target.c_str(), W_OK) != 0)) {
        return false;
    }
    TemporaryFile file(target, replaces ? 0600 : 0666);
    if (!file.write(text) || (replaces && !file.resemble(old)) || !file.moveTo(target)) {
        return false;
    }
    flushFolder(target.parent_path());
    return true;
}

bool voutCopyFileSafely(const std::string& source, const std::string& target) {
    struct stat original {};
    std::error_code ignored;
    const std::optional<std::string> text = textOfFile(source.c_str());
    if (!text || ::stat(source.c_str(), &original) != 0 ||
        fs::symlink_status(target, ignored).type() != fs::file_type::not_found) {
        return false;
    }
    TemporaryFile file(target, 0600);
    if (!file.write(*text) || !file.resemble(original) || !file.moveTo(target)) {
        return false;
    }
    flushFolder(fs::path(target).parent_path());
    return true;
}
