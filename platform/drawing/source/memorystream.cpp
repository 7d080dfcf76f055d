// The stream in memory, and what streams have in common.
#include <cstring>
#include <new>
#include <stdexcept>
#include <vector>

#include "drawing/rxobjectimpl.h"
#include "streamposition.h"

ODRX_DEFINE_MEMBERS(OdStreamBuf, OdRxObject, nullptr, L"OdStreamBuf")

namespace {

class MemoryStream : public OdStreamBuf {
  public:
    bool isEof() const override { return position >= bytes.size(); }
    std::uint64_t length() const override { return bytes.size(); }
    std::uint64_t tell() const override { return position; }
    std::uint64_t seek(std::int64_t offset, OdSeekType from) override {
        position = soughtPosition(*this, offset, from);
        return position;
    }
    std::uint8_t getByte() override {
        std::uint8_t byte = 0;
        getBytes(&byte, 1);
        return byte;
    }
    void getBytes(void* target, std::uint32_t count) override {
        if (count == 0) {
            return;
        }
        if (position > bytes.size() || bytes.size() - position < count) {
            throw OdError(eEndOfFile);
        }
        std::memcpy(target, bytes.data() + position, count);
        position += count;
    }
    void putByte(std::uint8_t value) override { putBytes(&value, 1); }
    void putBytes(const void* source, std::uint32_t count) override {
        if (count == 0) {
            return;
        }
        growTo(position + count);
        std::memcpy(bytes.data() + position, source, count);
        position += count;
    }
    void truncate() override {
        if (position < bytes.size()) {
            bytes.resize(position);
        }
    }

  private:
    void growTo(std::uint64_t size) {
        try {
            if (size > bytes.size()) {
                bytes.resize(size);
            }
        } catch (const std::bad_alloc&) {
            throw OdError(eFileWriteError, L"out of memory");
        } catch (const std::length_error&) {
            throw OdError(eFileWriteError, L"out of memory");
        }
    }

    std::vector<std::uint8_t> bytes;
    std::uint64_t position = 0;
};

}  // namespace

std::uint64_t soughtPosition(const OdStreamBuf& stream, std::int64_t offset, OdSeekType from) {
    std::uint64_t base = 0;
    if (from != kSeekFromStart) {
        base = from == kSeekFromCurrent ? stream.tell() : stream.length();
    }
    std::int64_t sought = 0;
    if (__builtin_add_overflow(static_cast<std::int64_t>(base), offset, &sought) || sought < 0) {
        throw OdError(eInvalidInput, L"no place in a stream");
    }
    return static_cast<std::uint64_t>(sought);
}

OdStreamBufPtr newOdMemoryStream() {
    return OdRxObjectImpl<MemoryStream>::createObject();
}
