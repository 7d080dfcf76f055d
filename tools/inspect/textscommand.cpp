// vemo-inspect message, vemo-inspect language
#include <iostream>
#include <set>

#include "arguments.h"
#include "inspectruntime.h"
#include "jsontext.h"
#include "languagetags.h"
#include "subcommands.h"

namespace inspect {

namespace {

constexpr unsigned int kMostCodes = 100'000;
constexpr unsigned int kHighestCode = 0xFFFFFFFF;

struct Range {
    unsigned int first;
    unsigned int last;
};

Range readRange(const std::string& text) {
    const std::size_t dash = text.find('-', 1);
    const auto first = readNumber(text.substr(0, dash), kHighestCode);
    const auto last =
        dash == std::string::npos ? first : readNumber(text.substr(dash + 1), kHighestCode);
    if (!first || !last || *first > *last || *last - *first >= kMostCodes) {
        throw UsageError(text + " is no code and no range of up to " + std::to_string(kMostCodes) +
                         " codes.");
    }
    return {*first, *last};
}

struct Row {
    std::string key;
    std::string text;
};

int show(const Arguments& arguments, const std::vector<Row>& rows) {
    if (!arguments.has("--json")) {
        for (const Row& row : rows) {
            std::cout << row.key << '\t' << row.text << '\n';
        }
        return 0;
    }
    JsonObject answer;
    std::set<std::string> seen;
    for (const Row& row : rows) {
        if (seen.insert(row.key).second) {
            answer.add(row.key, jsonText(row.text));
        }
    }
    std::cout << answer.json() << '\n';
    return 0;
}

Arguments parsed(const std::vector<std::string>& words, const char* wanted) {
    Arguments arguments(words, {.flags = {"--json"}, .values = {}});
    if (arguments.operands().empty() || !arguments.behindDashes().empty()) {
        throw UsageError(wanted);
    }
    return arguments;
}

}  // namespace

int inspectMessages(const std::vector<std::string>& words) {
    const Arguments arguments = parsed(words, "message needs codes.");
    std::vector<Range> ranges;
    for (const std::string& operand : arguments.operands()) {
        ranges.push_back(readRange(operand));
    }
    const InspectRuntime runtime;
    std::vector<Row> rows;
    for (const Range& range : ranges) {
        for (unsigned int offset = 0; offset <= range.last - range.first; ++offset) {
            const unsigned int code = range.first + offset;
            rows.push_back(
                {std::to_string(code),
                 OdStringToUtf8String(odrxSystemServices()->formatMessage(code, nullptr)).str()});
        }
    }
    return show(arguments, rows);
}

int inspectLanguages(const std::vector<std::string>& words) {
    const Arguments arguments = parsed(words, "language needs identifiers.");
    std::vector<Row> rows;
    for (const std::string& operand : arguments.operands()) {
        const auto id = readNumber(operand, 0xFFFF);
        if (!id) {
            throw UsageError(operand + " is no identifier of 16 bits.");
        }
        const OdString tag = vosi::languageTag(static_cast<std::uint16_t>(*id));
        rows.push_back({std::to_string(*id), OdStringToUtf8String(tag).str()});
    }
    return show(arguments, rows);
}

}  // namespace inspect
