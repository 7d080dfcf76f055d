#include "dxfrecords.h"

#include <charconv>

#include "text.h"

namespace vemoapp {

namespace {

// The application name under which the format keeps its own extended data.
constexpr const char* kOwnApplication = "ACAD";
// Eight times what the format allows; the rest of a longer name is dropped.
constexpr std::size_t kMaxName = 2048;

}  // namespace

bool DxfRecordReader::at(int code, std::string_view value) const {
    return group.code == code && trimmed(group.value) == value;
}

void DxfRecordReader::advance() {
    if (!groups.next(group)) {
        throwDrawingError(groups.lineNumber(), "the file ends before its EOF mark");
    }
}

DxfRecord DxfRecordReader::readRecord() {
    DxfRecord record;
    record.type = trimmed(group.value);
    record.line = group.line;
    if (record.type.empty() || record.type.size() > kMaxName) {
        throwDrawingError(group.line, "a record's type is expected");
    }
    ownExtendedData = false;
    for (advance(); group.code != 0; advance()) {
        take(record);
    }
    return record;
}

void DxfRecordReader::take(DxfRecord& record) {
    auto takeText = [this](std::optional<std::string>& field) {
        if (!field) {
            field = group.value.substr(0, kMaxName);
        }
    };
    auto takeInteger = [this](auto& field) {
        if (!field) {
            field = static_cast<typename std::remove_reference_t<decltype(field)>::value_type>(
                integer());
        }
    };
    switch (group.code) {
        case 2:
            takeText(record.name);
            break;
        case 3:
            takeText(record.font);
            break;
        case 4:
            takeText(record.bigFont);
            break;
        case 8:
            takeText(record.layer);
            break;
        case 62:
            takeInteger(record.colour);
            break;
        case 70:
            takeInteger(record.flags);
            break;
        case 1001:
            ownExtendedData = group.value == kOwnApplication;
            break;
        case 1000:
            if (ownExtendedData) {
                takeText(record.typeface);
            }
            break;
        case 1071:
            if (ownExtendedData) {
                takeInteger(record.face);
            }
            break;
        default:
            break;
    }
}

std::int64_t DxfRecordReader::integer() const {
    std::string_view digits = trimmed(group.value);
    std::int64_t number = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        throwDrawingError(group.line,
                          "an integer is expected, not \"" + group.value.substr(0, 32) + "\"");
    }
    return number;
}

}  // namespace vemoapp
