// Font files: one face or a collection of them.
#include "voapfontsread.h"

#include <array>
#include <cstring>
#include <utility>

#include "bigendian.h"
#include "fontassertion.h"
#include "meteredstream.h"

namespace vosi {

namespace {

constexpr std::uint32_t kCollectionHeaderSize = 12;

// The style flags aren't reset between the faces of a collection: a face carries those of the faces
// before it. Look-ups by style have always seen them so.
class FaceReader {
  public:
    FaceReader(OdStreamBufPtr file, std::vector<TtfFaceRecord>& result)
        : stream(std::move(file)), records(result) {}

    bool read() { return isCollection() ? readCollection() : readFaceAt(0); }

  private:
    bool isCollection();
    bool readFaceAt(std::uint32_t offset);
    bool readCollection();
    std::uint32_t readFaceOffset(std::uint32_t face);

    MeteredStream stream;
    std::vector<TtfFaceRecord>& records;
    bool bold = false;
    bool italic = false;
};

bool FaceReader::isCollection() {
    std::array<char, 4> tag{};
    stream.getBytes(tag.data(), tag.size());
    return std::memcmp(tag.data(), "ttcf", tag.size()) == 0;
}

bool FaceReader::readFaceAt(std::uint32_t offset) {
    TtfFaceRecord record;
    stream.seekTo(offset);
    if (!readTtfNameTable(stream, record.typeface, record.localNames, bold, italic)) {
        return false;
    }
    record.setBold(bold);
    record.setItalic(italic);
    records.push_back(std::move(record));
    return true;
}

std::uint32_t FaceReader::readFaceOffset(std::uint32_t face) {
    std::array<std::uint8_t, 4> bytes{};
    stream.seekTo(kCollectionHeaderSize + std::uint64_t{4} * face);
    stream.getBytes(bytes.data(), bytes.size());
    return bigEndian32(bytes.data());
}

bool FaceReader::readCollection() {
    static bool reported = false;
    std::array<std::uint8_t, kCollectionHeaderSize> header{};
    stream.seekTo(0);
    stream.getBytes(header.data(), header.size());
    const std::uint16_t major = bigEndian16(&header[4]);
    const std::uint16_t minor = bigEndian16(&header[6]);
    if ((major != 1 && major != 2) || minor != 0) {
        assertOnce(reported, "Invalid Execution.", __LINE__);
        return false;
    }
    const std::uint32_t faceCount = bigEndian32(&header[8]);
    if (faceCount == 0) {
        return false;
    }
    // A file that ends within its list of faces has none, so the last entry is read before the
    // first face; a count that the file can't hold costs nothing.
    readFaceOffset(faceCount - 1);
    bool found = false;
    for (std::uint32_t face = 0; face < faceCount; ++face) {
        found = readFaceAt(readFaceOffset(face)) || found;
    }
    return found;
}

}  // namespace

bool readTtfDescriptors(const OdString& path, std::vector<TtfFaceRecord>& records) {
    if (path.isEmpty()) {
        return false;
    }
    try {
        const OdStreamBufPtr stream =
            odrxSystemServices()->createFile(path, kFileRead, kShareDenyNo, kOpenExisting);
        if (stream.isNull()) {
            return false;
        }
        return FaceReader(stream, records).read();
    } catch (const OdError&) {
        return false;
    }
}

}  // namespace vosi
