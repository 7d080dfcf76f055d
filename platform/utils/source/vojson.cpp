// Trees in files.
#include "utils/vojson.h"

#include <fcntl.h>
#include <global/log.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <optional>

#include "filedescriptor.h"
#include "jsonreader.h"
#include "jsonwriter.h"
#include "utils/safefile.h"

namespace {

constexpr const char* unit = "../../../platform/utils/source/vojson";

// Nothing for what is no plain file, can't be read, or is too long for the positions in an error.
std::optional<std::string> textOfFile(const char* path) {
    // Without O_NONBLOCK a pipe that nobody writes to would be waited for.
    const FileDescriptor file(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > INT_MAX) {
        return std::nullopt;
    }
    constexpr std::size_t step = 65536;
    std::string text;
    text.reserve(static_cast<std::size_t>(status.st_size) + step);
    for (std::size_t length = 0; length < INT_MAX;) {
        text.resize(length + step);
        const ssize_t count = ::read(file.get(), text.data() + length, step);
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        length += count < 0 ? 0 : static_cast<std::size_t>(count);
        text.resize(length);
        if (count == 0) {
            return text;
        }
    }
    return std::nullopt;
}

void logError(const OdAnsiString& path, const JsonError& error, int line) {
    constexpr int level = 4;
    if (vemo_log_level() <= level) {
        const std::string text = path.str() + ": line " + std::to_string(error.line) + ", column " +
                                 std::to_string(error.column) + ": " + error.reason;
        vo_Log(level, line, unit, "read", text.c_str());
    }
}

}  // namespace

bool VoJson::read(const OdAnsiString& path, int /*sizeLimit*/, const char* /*encoding*/) {
    const std::optional<std::string> text = textOfFile(path.c_str());
    if (!text) {
        return false;
    }
    VoJsonPtr root;
    if (const std::optional<JsonError> error = readJsonText(*text, root)) {
        logError(path, *error, __LINE__);
        return false;
    }
    static_cast<VoJsonPtr&>(*this) = std::move(root);
    return true;
}

bool VoJson::write(const std::string& path, fileFormat format, const char* /*encoding*/) const {
    const JsonForm form = format == kIndented ? JsonForm::kIndented : JsonForm::kCompact;
    std::string text;
    return !isNull() && writeJsonText(*get(), form, text) && voutWriteFileSafely(path, text);
}
