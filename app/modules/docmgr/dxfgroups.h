// Groups of an ASCII DXF drawing: a code line and a value line each.
#pragma once

#include <cstdint>
#include <istream>
#include <string>

#include "linereader.h"

namespace vemoapp {

/// One group; `value` holds the bytes as they stand in the file.
struct DxfGroup {
    int code = 0;
    std::string value;
    std::uint64_t line = 0;  // of the value, counted from 1
};

/// Raises OdError (eExtendedError) with "line N: MESSAGE".
[[noreturn]] void throwDrawingError(std::uint64_t line, const std::string& message);

/// Reads groups one by one. Comments and a byte order mark are skipped; leading and trailing blanks
/// of the code line are allowed. Anything else raises OdError (eExtendedError) with its line.
class DxfGroupReader {
  public:
    explicit DxfGroupReader(std::istream& stream) : lines(stream, kMaxLine) {}

    /// False at the end of the stream.
    bool next(DxfGroup& group);

    std::uint64_t lineNumber() const { return lines.lineNumber(); }

    static constexpr std::size_t kMaxLine = 65536;

  private:
    bool readLine(std::string& line);
    int readCode(const std::string& line) const;

    LineReader lines;
    std::string codeLine;
};

}  // namespace vemoapp
