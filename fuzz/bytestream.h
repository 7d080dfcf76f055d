// A stream over bytes that somebody else keeps, which may give less than it says it has.
#pragma once

#include <drawing/runtime.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

class ByteStream : public OdStreamBuf {
  public:
    std::string_view bytes;
    /// Reads beyond this place raise, whatever the length is.
    std::uint64_t readable = 0;
    /// A place beyond the end isn't taken; the stream goes to its end instead.
    bool stopsAtEnd = false;
    /// How many bytes were read.
    std::uint64_t given = 0;

    bool isEof() const override { return position >= bytes.size(); }
    std::uint64_t length() const override { return bytes.size(); }
    std::uint64_t tell() const override { return position; }
    std::uint64_t seek(std::int64_t offset, OdSeekType from) override {
        const std::uint64_t base = from == kSeekFromStart     ? 0
                                   : from == kSeekFromCurrent ? position
                                                              : bytes.size();
        position = base + static_cast<std::uint64_t>(offset);
        if (stopsAtEnd) {
            position = std::min<std::uint64_t>(position, bytes.size());
        }
        return position;
    }
    std::uint8_t getByte() override {
        std::uint8_t byte = 0;
        getBytes(&byte, 1);
        return byte;
    }
    void getBytes(void* target, std::uint32_t count) override {
        const std::uint64_t end = std::min<std::uint64_t>(readable, bytes.size());
        if (position > end || end - position < count) {
            throw OdError(eEndOfFile);
        }
        bytes.copy(static_cast<char*>(target), count, position);
        position += count;
        given += count;
    }
    void putByte(std::uint8_t) override { throw OdError(eNotOpenForWrite); }
    void putBytes(const void*, std::uint32_t) override { throw OdError(eNotOpenForWrite); }
    void truncate() override { throw OdError(eNotOpenForWrite); }

  private:
    std::uint64_t position = 0;
};

/// At the start of the bytes, all of them readable.
inline OdSmartPtr<ByteStream> newByteStream(std::string_view bytes) {
    auto stream = OdRxObjectImpl<ByteStream>::createObject();
    stream->bytes = bytes;
    stream->readable = bytes.size();
    return stream;
}
