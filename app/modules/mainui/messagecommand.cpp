#include "messagecommand.h"

#include <charconv>
#include <optional>

#include "say.h"

namespace vemoapp {

namespace {

constexpr unsigned int kMostCodes = 1000;

struct CodeRange {
    unsigned int first = 0;
    unsigned int last = 0;
};

// "57" or "491-500".
std::optional<CodeRange> readRange(const std::string& text) {
    CodeRange range;
    const char* const end = text.data() + text.size();
    auto read = std::from_chars(text.data(), end, range.first);
    range.last = range.first;
    if (read.ec == std::errc() && read.ptr != end && *read.ptr == '-') {
        read = std::from_chars(read.ptr + 1, end, range.last);
    }
    const bool good = read.ec == std::errc() && read.ptr == end && range.first <= range.last &&
                      range.last - range.first < kMostCodes;
    return good ? std::optional(range) : std::nullopt;
}

// One line a message: a line's end within it is shown as it is written in a format.
std::string onOneLine(const OdString& text) {
    std::string line;
    for (const char byte : OdStringToUtf8String(text).str()) {
        line += byte == '\n' ? "\\n" : std::string(1, byte);
    }
    return line;
}

void sayMessages(const CodeRange& range) {
    for (unsigned int offset = 0; offset <= range.last - range.first; ++offset) {
        const unsigned int code = range.first + offset;
        const OdString text = odrxSystemServices()->formatMessage(code, nullptr);
        say("  " + std::to_string(code) + "  " + onOneLine(text));
    }
}

void messageCommand(const Command::Arguments& arguments) {
    std::vector<CodeRange> ranges;
    for (const std::string& argument : arguments) {
        if (const auto range = readRange(argument)) {
            ranges.push_back(*range);
        }
    }
    if (arguments.empty() || ranges.size() != arguments.size()) {
        say("MESSAGE code...; a code is a number or a range such as 491-500, at most " +
            std::to_string(kMostCodes) + " of them.");
        return;
    }
    for (const CodeRange& range : ranges) {
        sayMessages(range);
    }
}

}  // namespace

void addMessageCommand(CommandTable& table) {
    table.add(
        {"MESSAGE", "code...", "shows the texts of result and message codes", messageCommand});
}

}  // namespace vemoapp
