// Records of a DXF section: the groups from one code 0 to the next.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "dxfgroups.h"

namespace vemoapp {

/// The groups of one record that this application looks at. Of a code that comes several times the
/// first counts; the others are never kept, so a record's size doesn't matter.
struct DxfRecord {
    std::string type;
    std::uint64_t line = 0;
    std::optional<std::string> name;      // 2
    std::optional<std::string> font;      // 3
    std::optional<std::string> bigFont;   // 4
    std::optional<std::string> layer;     // 8
    std::optional<int> colour;            // 62
    std::optional<int> flags;             // 70
    std::optional<std::string> typeface;  // 1000 among the extended data of the format's own name
    std::optional<std::int64_t> face;     // 1071 there
};

/// Walks the groups of a drawing with one group of look-ahead. Raises OdError (eExtendedError) with
/// the line when the file is damaged, and when it ends before its end mark.
class DxfRecordReader {
  public:
    explicit DxfRecordReader(std::istream& stream) : groups(stream) {}

    const DxfGroup& current() const { return group; }
    void advance();

    /// Whether the current group has this code and, blanks at its ends aside, this value.
    bool at(int code, std::string_view value) const;

    /// From the current code 0 reads a record; the next code 0 is current afterwards.
    DxfRecord readRecord();

    /// The current group's value as an integer.
    std::int64_t integer() const;

  private:
    void take(DxfRecord& record);

    DxfGroupReader groups;
    DxfGroup group;
    bool ownExtendedData = false;
};

}  // namespace vemoapp
