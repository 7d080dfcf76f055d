#include "logfile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

void LogFile::setPath(const std::string& newPath) {
    close();
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(newPath, error);
    path = error ? newPath : absolute.string();
}

bool LogFile::append(std::string_view line) {
    if (!open()) {
        return false;
    }
    if (isFullWith(line)) {
        rotate();
        if (!open()) {
            return false;
        }
    }
    return ::write(descriptor, line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

void LogFile::close() {
    if (descriptor >= 0) {
        ::close(std::exchange(descriptor, -1));
    }
}

bool LogFile::open() {
    if (descriptor >= 0 && isAtPath()) {
        return true;
    }
    close();
    // Not blocking, so that a pipe that nobody reads is refused instead of halting the caller.
    descriptor = ::open(path.c_str(),
                        O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0640);
    return descriptor >= 0;
}

bool LogFile::isAtPath() const {
    struct stat opened {};
    struct stat named {};
    return ::fstat(descriptor, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

bool LogFile::isFullWith(std::string_view line) const {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0 &&
           status.st_size + static_cast<off_t>(line.size()) > limit;
}

// Two processes may find the same file full. The lock lets one of them go first, and the other then
// sees that the path no longer names what it has open, and leaves the new file alone. When the file
// can't be renamed it simply grows on.
void LogFile::rotate() {
    if (::flock(descriptor, LOCK_EX) != 0) {
        return;
    }
    if (isAtPath() && std::rename(path.c_str(), (path + ".1").c_str()) == 0) {
        close();
        return;
    }
    ::flock(descriptor, LOCK_UN);
}
