// Font files and collections, whole and cut short: what the faces are, and how much is read for
// them.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bytestream.h"
#include "property.h"
#include "voapfontsread.h"

namespace {

using Records = std::vector<vosi::TtfFaceRecord>;

constexpr std::uint32_t kStyleFlags = 0x03000000;
constexpr std::uint64_t kLongestText = 65536;

// Has the readers' one way to a file end in memory.
class Files : public ExSystemServices {
  public:
    OdStreamBufPtr createFile(const OdString& /*name*/, std::uint32_t /*access*/,
                              std::uint32_t /*shareMode*/, std::uint32_t /*disposition*/) override {
        return file;
    }

    OdSmartPtr<ByteStream> file;
};

Files& files() {
    static OdStaticRxObject<Files> services;
    static const bool up = (odInitialize(&services), true);
    (void)up;
    return services;
}

struct Reading {
    Records records;
    bool found;
    std::uint64_t given;
};

Reading read(const OdSmartPtr<ByteStream>& file) {
    files().file = file;
    Reading reading{};
    reading.found = vosi::readTtfDescriptors(L"font.ttf", reading.records);
    reading.given = file->given;
    files().file = nullptr;
    return reading;
}

bool sameFace(const vosi::TtfFaceRecord& a, const vosi::TtfFaceRecord& b) {
    return a.flags == b.flags && a.typeface == b.typeface && a.localNames == b.localNames;
}

void checkNames(const vosi::TtfFaceRecord& record) {
    requireProperty(!record.localNames.empty(), "a face has a name");
    bool isOneOfThem = record.typeface.isEmpty();
    for (const auto& [language, name] : record.localNames) {
        requireProperty(!name.isEmpty(), "a name has text");
        requireProperty(name.view().find(L'\0') == std::wstring_view::npos,
                        "a text ends at its NUL");
        isOneOfThem = isOneOfThem || name == record.typeface;
    }
    requireProperty(isOneOfThem, "the typeface is one of the names or empty");
    const auto english = record.localNames.find(1033);
    requireProperty(english == record.localNames.end() || english->second == record.typeface,
                    "the name in language 1033 is the typeface");
}

void checkReading(const Reading& reading, std::uint64_t length) {
    std::uint32_t flags = 0;
    std::uint64_t characters = 0;
    for (const vosi::TtfFaceRecord& record : reading.records) {
        requireProperty((record.flags & ~kStyleFlags) == 0, "flags are bold and italic");
        requireProperty((record.flags & flags) == flags,
                        "a face has the styles of those before it");
        requireProperty(record.fileName.isEmpty() && record.reserved == 0, "the rest is empty");
        checkNames(record);
        flags = record.flags;
        for (const auto& [language, name] : record.localNames) {
            characters += name.view().size();
        }
    }
    requireProperty(!reading.found || !reading.records.empty(), "success has a face");
    requireProperty(reading.given <= length + kLongestText, "reading is bounded by the length");
    requireProperty(characters <= length + kLongestText, "memory is bounded by the length");
}

// A place within the bytes that only they decide.
std::uint64_t placeIn(std::string_view bytes) {
    std::uint64_t hash = 14695981039346656037u;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211u;
    }
    return (hash ^ hash >> 32) % (bytes.size() + 1);
}

void checkCut(std::string_view bytes, const Reading& whole) {
    const auto file = newByteStream(bytes);
    file->readable = placeIn(bytes);
    const Reading cut = read(file);
    checkReading(cut, bytes.size());
    requireProperty(cut.records.size() <= whole.records.size(), "a cut adds no face");
    for (std::size_t face = 0; face < cut.records.size(); ++face) {
        requireProperty(sameFace(cut.records[face], whole.records[face]),
                        "the faces before a cut are those of the whole file");
    }
    requireProperty(!cut.found || cut.records.size() == whole.records.size(),
                    "a cut that costs a face is a failure");
}

// A stream that goes no further than its end costs names and faces, and no more than that.
void checkStop(std::string_view bytes) {
    const auto file = newByteStream(bytes);
    file->stopsAtEnd = true;
    checkReading(read(file), bytes.size());
}

// The names of the one face at the start, which the stream's reader gives, too.
void checkSingle(std::string_view bytes, const Reading& whole) {
    OdString typeface;
    vosi::FontNames names;
    bool bold = false;
    bool italic = false;
    bool found = false;
    try {
        found = vosi::readTtfNameTable(newByteStream(bytes), typeface, names, bold, italic);
    } catch (const OdError& error) {
        requireProperty(error.code() == eEndOfFile || error.code() == eFileInternalErr,
                        "errors are those of a font that can't be read");
    }
    // The file's reader has looked at the first four bytes before, which count.
    if (found && whole.found) {
        const vosi::TtfFaceRecord& face = whole.records.front();
        requireProperty(face.typeface == typeface && face.localNames == names &&
                            face.isBold() == bold && face.isItalic() == italic,
                        "file and stream have the same face");
    }
    requireProperty(found || !whole.found, "a face of the file is one of the stream");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const Reading whole = read(newByteStream(bytes));
    checkReading(whole, size);
    const bool isCollection = bytes.substr(0, 4) == "ttcf";
    if (!isCollection) {
        requireProperty(whole.records.size() <= 1, "a single file has one face");
        checkSingle(bytes, whole);
    }
    checkCut(bytes, whole);
    checkStop(bytes);
    return 0;
}
