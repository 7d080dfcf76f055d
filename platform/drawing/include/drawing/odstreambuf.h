// Byte streams.
#pragma once

#include <cstdint>

#include "drawing/rxclass.h"

enum OdFileAccess : std::uint32_t { kFileRead = 0x80000000u, kFileWrite = 0x40000000u };
enum OdFileShareMode : std::uint32_t {
    kShareDenyReadWrite = 0x10,
    kShareDenyWrite = 0x20,
    kShareDenyRead = 0x30,
    kShareDenyNo = 0x40
};
enum OdFileCreationDisposition : std::uint32_t {
    kCreateNew = 1,
    kCreateAlways = 2,
    kOpenExisting = 3,
    kOpenAlways = 4,
    kTruncateExisting = 5
};
enum OdSeekType { kSeekFromStart, kSeekFromCurrent, kSeekFromEnd };

/// A stream of bytes with a position. A read that can't be satisfied whole raises OdError
/// (eEndOfFile) and leaves the position undefined; a failed write raises OdError (eFileWriteError).
/// Belongs to one thread at a time.
class DRAWING_EXPORT OdStreamBuf : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdStreamBuf)

    /// The file's name; empty for a stream in memory.
    virtual OdString fileName() const { return OdString(); }
    virtual bool isEof() const = 0;
    virtual std::uint64_t length() const = 0;
    virtual std::uint64_t tell() const = 0;
    /// Moves the position and gives it back. A place beyond the end is taken, and the next read
    /// raises; a place before the start raises OdError (eInvalidInput).
    virtual std::uint64_t seek(std::int64_t offset, OdSeekType from) = 0;
    virtual std::uint8_t getByte() = 0;
    virtual void getBytes(void* buffer, std::uint32_t count) = 0;
    virtual void putByte(std::uint8_t value) = 0;
    virtual void putBytes(const void* buffer, std::uint32_t count) = 0;
    /// Cuts the stream off at its position.
    virtual void truncate() = 0;
};

using OdStreamBufPtr = OdSmartPtr<OdStreamBuf>;

/// A stream over memory that grows as it is written.
DRAWING_EXPORT OdStreamBufPtr newOdMemoryStream();
