#include "dxfgroups.h"

#include <charconv>

#include <drawing/runtime.h>

#include "text.h"

namespace vemoapp {

namespace {

constexpr int kFirstCode = -5;
constexpr int kLastCode = 1071;
constexpr int kComment = 999;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kQuotedLength = 32;

}  // namespace

void throwDrawingError(std::uint64_t line, const std::string& message) {
    std::string text = "line " + std::to_string(line) + ": " + message;
    throw OdError(OdUtf8StringToOdString(text));
}

bool DxfGroupReader::next(DxfGroup& group) {
    do {
        if (!readLine(codeLine)) {
            return false;
        }
        group.code = readCode(codeLine);
        if (!readLine(group.value)) {
            throwDrawingError(lineNumber(), "the file ends in the middle of a group");
        }
    } while (group.code == kComment);
    group.line = lineNumber();
    return true;
}

bool DxfGroupReader::readLine(std::string& line) {
    LineReader::Result result = lines.next(line);
    if (result == LineReader::kEnd) {
        return false;
    }
    if (line.find('\0') != std::string::npos) {
        throwDrawingError(lineNumber(), "binary data; only ASCII DXF drawings are read");
    }
    if (result == LineReader::kTooLong) {
        throwDrawingError(lineNumber(), "longer than " + std::to_string(kMaxLine) + " bytes");
    }
    if (lineNumber() == 1 && line.starts_with(kByteOrderMark)) {
        line.erase(0, kByteOrderMark.size());
    }
    return true;
}

int DxfGroupReader::readCode(const std::string& line) const {
    std::string_view digits = trimmed(line);
    int code = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code);
    bool whole = error == std::errc() && end == digits.data() + digits.size();
    if (!whole || code < kFirstCode || code > kLastCode) {
        throwDrawingError(lineNumber(), "a group code is expected, not \"" +
                                            line.substr(0, kQuotedLength) + "\"");
    }
    return code;
}

}  // namespace vemoapp
