// Code page numbers. The map of a file stands before the built-in one for the life of the process;
// it is set on the interface thread.
#include "drawing/odcharmapper.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace {

struct CodePageRow {
    int windows;
    int runtime;
};

// The numbers that drawing files use for Windows code pages.
constexpr CodePageRow builtInRows[] = {
    {20127, 1}, {874, 37},  {932, 38},  {936, 39},  {949, 40},   {950, 41},
    {1250, 28}, {1251, 29}, {1252, 30}, {1253, 32}, {1254, 33},  {1255, 34},
    {1256, 35}, {1257, 36}, {1258, 44}, {1361, 42}, {65001, 46},
};

using CodePageMap = std::map<int, int>;

CodePageMap& fileRows() {
    static auto* const rows = new CodePageMap;
    return *rows;
}

std::optional<std::string> contentsOf(const OdString& fileName) {
    std::ifstream file(OdStringToUtf8String(fileName).c_str(), std::ios::binary);
    std::ostringstream contents;
    char first = 0;
    if (file.get(first)) {
        contents << first << file.rdbuf();
    }
    return file.is_open() && !file.bad() ? std::optional(contents.str()) : std::nullopt;
}

// Takes a number off the line's front, with the blanks before it.
std::optional<int> takeNumber(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    int number = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (error != std::errc() || number < 0) {
        return std::nullopt;
    }
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    return number;
}

std::optional<CodePageRow> rowOf(std::string_view line) {
    const auto windows = takeNumber(line);
    const bool parted = line.starts_with(' ') || line.starts_with('\t');
    const auto runtime = takeNumber(line);
    const bool ended = line.find_first_not_of(" \t") == line.npos;
    if (!windows || !parted || !runtime || !ended) {
        return std::nullopt;
    }
    return CodePageRow{*windows, *runtime};
}

// Null when a line is neither a row nor one to pass over. The first row of a number counts.
std::optional<CodePageMap> parse(const std::string& contents) {
    CodePageMap rows;
    std::istringstream lines(contents.starts_with("\xEF\xBB\xBF") ? contents.substr(3) : contents);
    for (std::string line; std::getline(lines, line);) {
        line.erase(line.find_last_not_of('\r') + 1);
        if (line.find_first_not_of(" \t") == line.npos || line.starts_with('#')) {
            continue;
        }
        const auto row = rowOf(line);
        if (!row) {
            return std::nullopt;
        }
        rows.emplace(row->windows, row->runtime);
    }
    return rows;
}

}  // namespace

OdResult OdCharMapper::initialize(const OdString& fileName) {
    const auto contents = contentsOf(fileName);
    if (!contents) {
        return eCantOpenFile;
    }
    auto rows = parse(*contents);
    if (!rows) {
        return eInvalidInput;
    }
    fileRows() = std::move(*rows);
    return eOk;
}

OdCodePageId OdCharMapper::ansiCpToAcadCp(int windowsCodePage) {
    const auto mapped = fileRows().find(windowsCodePage);
    if (mapped != fileRows().end()) {
        return static_cast<OdCodePageId>(mapped->second);
    }
    for (const CodePageRow& row : builtInRows) {
        if (row.windows == windowsCodePage) {
            return static_cast<OdCodePageId>(row.runtime);
        }
    }
    return OdCodePageId::kUndefined;
}
