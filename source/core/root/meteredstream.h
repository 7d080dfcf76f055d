// The stream of a font file, read up to a limit.
//
// A font file may name one text, one table or one face as often as it likes, so that a small file
// could ask for any amount of reading and memory. What lies apart never comes to more than the
// file's length; the limit is that and one longest text more, for what a small file may have in
// common.
#pragma once

#include <cstdint>
#include <utility>

#include <drawing/runtime.h>

namespace vosi {

class MeteredStream {
  public:
    /// Reads on at the stream's position.
    explicit MeteredStream(OdStreamBufPtr source) : stream(std::move(source)) {}

    /// Raises what the stream raises, and OdError (eFileInternalErr) beyond the limit.
    void getBytes(void* target, std::uint32_t count) {
        if (count > left) {
            takeLength(count);
        }
        left -= count;
        stream->getBytes(target, count);
    }

    std::uint64_t position() const { return stream->tell(); }
    /// Whether the stream took the position, counted from its start.
    bool seekTo(std::uint64_t position) {
        return stream->seek(static_cast<std::int64_t>(position), kSeekFromStart) == position;
    }

  private:
    static constexpr std::uint64_t kLongestText = 65536;

    // Hardly any font needs it, and it may take a call to the system.
    void takeLength(std::uint32_t count) {
        if (!std::exchange(lengthTaken, true)) {
            left += stream->length();
        }
        if (count > left) {
            throw OdError(eFileInternalErr, L"The font file uses its parts too often");
        }
    }

    OdStreamBufPtr stream;
    std::uint64_t left = kLongestText;
    bool lengthTaken = false;
};

}  // namespace vosi
