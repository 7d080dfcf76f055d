// Entries of one size that stand side by side in a font file.
//
// They are read by blocks, but seen as if one were read after the other: of a file that ends among
// them the whole ones are seen, and the stream's error comes with the next.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "meteredstream.h"

namespace vosi {

template <std::size_t kEntrySize, std::uint32_t kBlock>
class EntryBlocks {
  public:
    /// So many from the stream's position on. The stream has to live longer, and may be moved
    /// between two entries.
    EntryBlocks(MeteredStream& source, std::uint32_t count)
        : stream(source), position(source.position()), left(count) {}

    /// The next entry's bytes, good until the next call; null behind the last, and when the stream
    /// doesn't take the position. Raises what the stream raises.
    const std::uint8_t* next() {
        if (entry == end && !fill()) {
            return nullptr;
        }
        return std::exchange(entry, entry + kEntrySize);
    }

  private:
    bool fill() {
        if (left == 0 || !stream.seekTo(position)) {
            return false;
        }
        const std::uint32_t taken = take(std::min(left, kBlock));
        entry = bytes.data();
        end = entry + kEntrySize * taken;
        position += kEntrySize * taken;
        left -= taken;
        return true;
    }

    std::uint32_t take(std::uint32_t count) {
        try {
            stream.getBytes(bytes.data(), static_cast<std::uint32_t>(kEntrySize) * count);
            return count;
        } catch (const OdError&) {
            stream.seekTo(position);
            stream.getBytes(bytes.data(), kEntrySize);
            return 1;
        }
    }

    MeteredStream& stream;
    std::uint64_t position;
    std::uint32_t left;
    const std::uint8_t* entry = nullptr;
    const std::uint8_t* end = nullptr;
    std::array<std::uint8_t, kEntrySize * kBlock> bytes;
};

}  // namespace vosi
