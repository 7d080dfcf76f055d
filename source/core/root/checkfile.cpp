#include "checkfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

namespace {

constexpr const char* kCheckFile = "/var/tmp/vemo.check";
constexpr std::string_view kText = "init done!";
constexpr off_t kLength = kText.size();
constexpr mode_t kNewFileMode = 0666;  // less the umask, as a new file's always was

// Not truncated as it is opened: by then it is too late to see that it is a second name of another
// file. And not emptied before it is written: the text is the same at every start, and file systems
// put a file that was emptied and written anew on disk as soon as it is closed, which a start would
// wait for.
int openCheckFile() {
    const int file =
        ::open(kCheckFile, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
               kNewFileMode);
    struct stat status {};
    if (file >= 0 && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_nlink == 1 && (status.st_size <= kLength || ::ftruncate(file, kLength) == 0)) {
        return file;
    }
    if (file >= 0) {
        ::close(file);
    }
    return -1;
}

}  // namespace

void writeCheckFile() {
    const int file = openCheckFile();
    if (file >= 0) {
        [[maybe_unused]] const ssize_t written = ::write(file, kText.data(), kText.size());
        ::close(file);
    }
}
