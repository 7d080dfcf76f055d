#include "wholefile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>

#include "filedescriptor.h"

std::optional<std::string> textOfFile(const char* path) {
    // Without O_NONBLOCK a pipe that nobody writes to would be waited for.
    const FileDescriptor file(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > INT_MAX) {
        return std::nullopt;
    }
    // Room for one byte more: a file that hasn't grown shows its end without another step.
    constexpr std::size_t step = 65536;
    std::string text(static_cast<std::size_t>(status.st_size) + 1, '\0');
    for (std::size_t length = 0; length < INT_MAX;) {
        if (length == text.size()) {
            text.resize(length + step);
        }
        const ssize_t count = ::read(file.get(), text.data() + length, text.size() - length);
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        length += count < 0 ? 0 : static_cast<std::size_t>(count);
        if (count == 0) {
            text.resize(length);
            return text;
        }
    }
    return std::nullopt;
}
