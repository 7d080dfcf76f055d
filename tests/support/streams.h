// Streams to read from.
#pragma once

#include <drawing/runtime.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

/// A stream in memory, at the start of these bytes.
inline OdStreamBufPtr streamOf(const std::string& bytes) {
    OdStreamBufPtr stream = newOdMemoryStream();
    stream->putBytes(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    stream->seek(0, kSeekFromStart);
    return stream;
}

/// A stream of any length: zeros but for the pieces put into it. It keeps what was asked of it.
class SparseStream : public OdStreamBuf {
  public:
    struct Read {
        std::uint64_t at;
        std::uint64_t count;
    };

    void put(std::uint64_t at, const std::string& bytes) { pieces[at] = bytes; }

    std::uint64_t size = 0;
    std::vector<Read> reads;
    std::vector<std::uint64_t> seeks;

    bool isEof() const override { return position >= size; }
    std::uint64_t length() const override { return size; }
    std::uint64_t tell() const override { return position; }
    std::uint64_t seek(std::int64_t offset, OdSeekType from) override {
        const std::uint64_t base = from == kSeekFromStart     ? 0
                                   : from == kSeekFromCurrent ? position
                                                              : size;
        position = base + static_cast<std::uint64_t>(offset);
        seeks.push_back(position);
        return position;
    }
    std::uint8_t getByte() override {
        std::uint8_t byte = 0;
        getBytes(&byte, 1);
        return byte;
    }
    void getBytes(void* target, std::uint32_t count) override {
        if (position > size || size - position < count) {
            throw OdError(eEndOfFile);
        }
        std::string bytes(count, '\0');
        for (const auto& [at, piece] : pieces) {
            const std::uint64_t first = std::max(at, position);
            const std::uint64_t last = std::min(at + piece.size(), position + count);
            if (first < last) {
                bytes.replace(first - position, last - first, piece, first - at, last - first);
            }
        }
        std::memcpy(target, bytes.data(), count);
        reads.push_back({position, count});
        position += count;
    }
    void putByte(std::uint8_t) override { throw OdError(eNotOpenForWrite); }
    void putBytes(const void*, std::uint32_t) override { throw OdError(eNotOpenForWrite); }
    void truncate() override { throw OdError(eNotOpenForWrite); }

  private:
    std::map<std::uint64_t, std::string> pieces;
    std::uint64_t position = 0;
};

inline OdSmartPtr<SparseStream> newSparseStream(std::uint64_t size) {
    auto stream = OdRxObjectImpl<SparseStream>::createObject();
    stream->size = size;
    return stream;
}
