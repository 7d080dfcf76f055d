// Lines of bytes from a stream, of bounded length.
#pragma once

#include <cstdint>
#include <istream>
#include <string>

namespace vemoapp {

/// Reads lines that end in LF or CRLF; the last one may end with the stream. The stream must
/// outlive the reader. A read error of a file stream raises std::ios_base::failure.
class LineReader {
  public:
    enum Result { kLine, kTooLong, kEnd };

    LineReader(std::istream& stream, std::size_t lengthLimit) : input(stream), limit(lengthLimit) {}

    /// Reads the next line, without its end. For a line beyond the limit gives kTooLong with its
    /// beginning; the rest is skipped by the next call.
    Result next(std::string& line);

    /// Number of the line last read, counted from 1.
    std::uint64_t lineNumber() const { return number; }

  private:
    void skipRest();

    std::istream& input;
    std::size_t limit;
    std::uint64_t number = 0;
    bool restPending = false;
};

}  // namespace vemoapp
