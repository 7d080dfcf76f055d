#include "aliasfile.h"

#include "linereader.h"
#include "text.h"

namespace vemoapp {

namespace {

constexpr std::size_t kMaxLine = 1024;

// Takes the line into the table; false when it has another form.
bool takeLine(std::string_view line, AliasTable& table) {
    std::size_t comma = line.find(',');
    if (comma == std::string_view::npos) {
        return false;
    }
    std::string_view alias = trimmed(line.substr(0, comma));
    std::string_view command = trimmed(line.substr(comma + 1));
    if (alias.empty() || command.size() < 2 || command.front() != '*') {
        return false;
    }
    table.commands[upperCase(alias)] = upperCase(trimmed(command.substr(1)));
    return true;
}

}  // namespace

AliasTable readAliases(std::istream& stream) {
    AliasTable table;
    LineReader lines(stream, kMaxLine);
    std::string line;
    for (auto result = lines.next(line); result != LineReader::kEnd; result = lines.next(line)) {
        std::string_view text = trimmed(std::string_view(line).substr(0, line.find(';')));
        bool taken = text.empty() || takeLine(text, table);
        if (!taken || result == LineReader::kTooLong) {
            table.errors.push_back("line " + std::to_string(lines.lineNumber()) +
                                   ": \"ALIAS, *COMMAND\" is expected");
        }
    }
    return table;
}

}  // namespace vemoapp
