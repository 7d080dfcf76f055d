// Trees in files.
#include "utils/vojson.h"

#include <global/log.h>

#include <optional>

#include "jsonreader.h"
#include "jsonwriter.h"
#include "utils/safefile.h"
#include "wholefile.h"

namespace {

constexpr const char* unit = "../../../platform/utils/source/vojson";

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
