#include "scriptfile.h"

#include <algorithm>

#include <drawing/runtime.h>

#include "linereader.h"
#include "text.h"

namespace vemoapp {

namespace {

constexpr std::size_t kMaxLine = 4096;

bool isCommandText(const std::string& line) {
    bool hasControl = std::any_of(line.begin(), line.end(), [](char letter) {
        auto byte = static_cast<unsigned char>(letter);
        return (byte < 0x20 && letter != '\t') || byte == 0x7F;
    });
    return !hasControl && OdStringToUtf8String(OdUtf8StringToOdString(line)).view() == line;
}

}  // namespace

std::optional<std::vector<std::string>> readScript(std::istream& stream) {
    LineReader lines(stream, kMaxLine);
    std::string line;
    if (lines.next(line) != LineReader::kLine || line != kScriptHeading) {
        return std::nullopt;
    }
    std::vector<std::string> commands;
    for (auto result = lines.next(line); result != LineReader::kEnd; result = lines.next(line)) {
        if (result == LineReader::kTooLong || !isCommandText(line)) {
            return std::nullopt;
        }
        if (!trimmed(line).empty()) {
            commands.push_back(line);
        }
    }
    return commands;
}

}  // namespace vemoapp
