// Reads go through a small buffer, since font headers are read by twos and fours; writes go
// straight to the file and empty the buffer, so that what is read is always what stands there.
#include "filestream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "drawing/rxobjectimpl.h"
#include "streamposition.h"

namespace {

class FileStream : public OdStreamBuf {
  public:
    FileStream(int openFile, const OdString& fileName, std::uint32_t access)
        : file(openFile), name(fileName), accessMode(access) {}
    ~FileStream() override { close(file); }

    OdString fileName() const override { return name; }
    bool isEof() const override { return !isBuffered() && position >= length(); }
    std::uint64_t length() const override {
        struct stat status {};
        if (fstat(file, &status) != 0) {
            fail(eFileAccessErr, errno);
        }
        return static_cast<std::uint64_t>(status.st_size);
    }
    std::uint64_t tell() const override { return position; }
    std::uint64_t seek(std::int64_t offset, OdSeekType from) override {
        position = soughtPosition(*this, offset, from);
        return position;
    }
    /// Raises OdError_FileException (eCantOpenFile) for what is none.
    void requireRegularFile() const;
    /// Fills the buffer. False for what can't be read at a position, and where nothing is read.
    bool readAhead();
    std::uint8_t getByte() override {
        std::uint8_t byte = 0;
        getBytes(&byte, 1);
        return byte;
    }
    void getBytes(void* target, std::uint32_t count) override;
    void putByte(std::uint8_t value) override { putBytes(&value, 1); }
    void putBytes(const void* source, std::uint32_t count) override;
    void truncate() override;

  private:
    [[noreturn]] void fail(OdResult code, int systemError = 0) const {
        throw OdError_FileException(code, name, systemError);
    }
    void require(OdFileAccess access, OdResult otherwise) const {
        if ((accessMode & access) == 0) {
            fail(otherwise);
        }
    }
    bool isBuffered() const {
        return position >= bufferStart && position - bufferStart < bufferSize;
    }
    void getManyBytes(std::uint8_t* target, std::uint64_t count);
    std::uint64_t readHere(void* target, std::size_t count);

    // Holds the names of a font that are wanted. A stream then still fits the allocator's quickest
    // blocks, and scans open thousands.
    static constexpr std::size_t kBufferSize = 896;
    // Holds the font's directory of tables.
    static constexpr std::size_t kAheadSize = 512;

    int file;
    OdString name;
    std::uint32_t accessMode;
    std::uint64_t position = 0;
    std::uint64_t bufferStart = 0;
    std::uint64_t bufferSize = 0;
    std::array<std::uint8_t, kBufferSize> buffer;
};

void FileStream::requireRegularFile() const {
    struct stat status {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        fail(eCantOpenFile, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
}

// Neither folders nor pipes can be read at a position.
bool FileStream::readAhead() {
    const ssize_t got = pread(file, buffer.data(), kAheadSize, 0);
    bufferSize = got > 0 ? static_cast<std::uint64_t>(got) : 0;
    return bufferSize > 0;
}

// At least one byte at the position, which stays.
std::uint64_t FileStream::readHere(void* target, std::size_t count) {
    ssize_t got = 0;
    do {
        got = pread(file, target, count, static_cast<off_t>(position));
    } while (got < 0 && errno == EINTR);
    // The system refuses a position near the largest number, which is beyond any file's end.
    if (const int error = errno; got < 0 && position < length()) {
        fail(eFileAccessErr, error);
    }
    if (got <= 0) {
        fail(eEndOfFile);
    }
    return static_cast<std::uint64_t>(got);
}

void FileStream::getBytes(void* target, std::uint32_t count) {
    require(kFileRead, eNotOpenForRead);
    const std::uint64_t first = position - bufferStart;
    if (first < bufferSize && count <= bufferSize - first) {
        std::memcpy(target, buffer.data() + first, count);
        position += count;
    } else {
        getManyBytes(static_cast<std::uint8_t*>(target), count);
    }
}

void FileStream::getManyBytes(std::uint8_t* target, std::uint64_t count) {
    while (count > 0) {
        std::uint64_t part = 0;
        if (isBuffered()) {
            const std::uint64_t first = position - bufferStart;
            part = std::min(count, bufferSize - first);
            std::memcpy(target, buffer.data() + first, part);
        } else if (count >= kBufferSize) {
            part = readHere(target, count);
        } else {
            bufferSize = 0;
            bufferSize = readHere(buffer.data(), kBufferSize);
            bufferStart = position;
        }
        target += part;
        position += part;
        count -= part;
    }
}

void FileStream::putBytes(const void* source, std::uint32_t count) {
    require(kFileWrite, eNotOpenForWrite);
    bufferSize = 0;
    const auto* from = static_cast<const std::uint8_t*>(source);
    while (count > 0) {
        const ssize_t put = pwrite(file, from, count, static_cast<off_t>(position));
        if (put < 0 && errno != EINTR) {
            fail(eFileWriteError, errno);
        }
        if (put > 0) {
            from += put;
            position += static_cast<std::uint64_t>(put);
            count -= static_cast<std::uint32_t>(put);
        }
    }
}

void FileStream::truncate() {
    require(kFileWrite, eNotOpenForWrite);
    bufferSize = 0;
    if (position < length() && ftruncate(file, static_cast<off_t>(position)) != 0) {
        fail(eFileWriteError, errno);
    }
}

int accessFlags(std::uint32_t access) {
    switch (access) {
        case kFileRead:
            return O_RDONLY;
        case kFileWrite:
            return O_WRONLY;
        case kFileRead | kFileWrite:
            return O_RDWR;
        default:
            return -1;
    }
}

int dispositionFlags(std::uint32_t disposition) {
    switch (disposition) {
        case kCreateNew:
            return O_CREAT | O_EXCL;
        case kCreateAlways:
            return O_CREAT | O_TRUNC;
        case kOpenExisting:
            return 0;
        case kOpenAlways:
            return O_CREAT;
        case kTruncateExisting:
            return O_TRUNC;
        default:
            return -1;
    }
}

// Opening never waits for the other end of a pipe, never passes the file on to another program.
int openFile(const OdString& name, int flags) {
    constexpr mode_t mode = 0666;
    int file = -1;
    do {
        file = open(OdStringToUtf8String(name), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
    } while (file < 0 && errno == EINTR);
    if (file < 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        throw OdError_FileException(missing ? eFileNotFound : eCantOpenFile, name, errno);
    }
    return file;
}

}  // namespace

OdStreamBufPtr openFileStream(const OdString& name, std::uint32_t access,
                              std::uint32_t disposition) {
    if (name.isEmpty()) {
        throw OdError_FileException(eNoFileName, name);
    }
    const int how = accessFlags(access);
    const int making = dispositionFlags(disposition);
    const bool changes = making > 0;
    if (how < 0 || making < 0 || (changes && how == O_RDONLY)) {
        throw OdError_FileException(eInvalidInput, name, L"access or disposition");
    }
    OdSmartPtr<FileStream> stream(
        new OdRxObjectImpl<FileStream>(openFile(name, how | making), name, access), kOdRxObjAttach);
    const bool isRead = how == O_RDONLY && stream->readAhead();
    if (!isRead) {
        stream->requireRegularFile();
    }
    return stream;
}
