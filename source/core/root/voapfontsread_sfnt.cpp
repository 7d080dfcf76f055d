// One face of an sfnt file: from its offset table to the records of its "name" table.
#include <array>
#include <optional>
#include <vector>

#include "bigendian.h"
#include "fontassertion.h"
#include "meteredstream.h"
#include "voapfontsread.h"

namespace vosi {

namespace {

constexpr std::uint16_t kEnglishUnitedStates = 1033;

enum NameId : std::uint16_t { kFamily = 1, kSubfamily = 2 };
enum Encoding : std::uint16_t { kUtf16 = 1, kUtf32 = 10 };

bool tagIs(const std::uint8_t* tag, const char* wanted) {
    const std::array<char, 5> text{static_cast<char>(tag[0]), static_cast<char>(tag[1]),
                                   static_cast<char>(tag[2]), static_cast<char>(tag[3]), '\0'};
    return Od_stricmpA(text.data(), wanted) == 0;
}

// The number of tables, nothing when this is no sfnt file.
std::optional<std::uint16_t> readOffsetTable(MeteredStream& stream) {
    static bool reported = false;
    std::array<std::uint8_t, 12> bytes{};
    stream.getBytes(bytes.data(), bytes.size());
    const bool isVersion1 = bigEndian32(bytes.data()) == 0x00010000;
    if (!isVersion1 && !tagIs(bytes.data(), "otto") && !tagIs(bytes.data(), "true")) {
        assertOnce(reported, "Invalid Execution.", __LINE__);
        return std::nullopt;
    }
    return bigEndian16(&bytes[4]);
}

// The offset of the "name" table from the start of the file.
std::optional<std::uint32_t> findNameTable(MeteredStream& stream, std::uint16_t tableCount) {
    static bool reported = false;
    for (unsigned int table = 0; table < tableCount; ++table) {
        std::array<std::uint8_t, 16> entry{};
        stream.getBytes(entry.data(), entry.size());
        if (tagIs(entry.data(), "name")) {
            return bigEndian32(&entry[8]);
        }
        if (entry[0] == 0) {
            break;
        }
    }
    assertOnce(reported, "bFound", __LINE__);
    return std::nullopt;
}

struct NameRecord {
    explicit NameRecord(const std::array<std::uint8_t, 12>& bytes)
        : encoding(bigEndian16(&bytes[2])),
          language(bigEndian16(&bytes[4])),
          nameId(bigEndian16(&bytes[6])),
          length(bigEndian16(&bytes[8])),
          offset(bigEndian16(&bytes[10])) {}

    std::uint16_t encoding;
    std::uint16_t language;
    std::uint16_t nameId;
    std::uint16_t length;
    std::uint16_t offset;
};

// Either half of a surrogate pair takes part in a sum with the odd-aligned bytes behind it, and
// three units are used up. Indexed names have always been made so, and drawings refer to them.
OdChar fromSurrogate(std::uint32_t unit, const std::uint8_t* next) {
    const std::uint32_t following = static_cast<std::uint32_t>(next[2]) << 8 | next[1];
    return static_cast<OdChar>((unit << 10) - 0x35FDC00u + following);
}

OdString readUtf16(MeteredStream& stream, std::uint16_t length) {
    const std::size_t unitCount = length / 2;
    // Two units of zeros behind the text: its end, and what a surrogate in last place reads beyond.
    std::vector<std::uint8_t> bytes(2 * (unitCount + 2));
    stream.getBytes(bytes.data(), length);
    bytes[2 * unitCount] = 0;

    OdString text;
    for (std::size_t index = 0; index < unitCount;) {
        const std::uint8_t* at = &bytes[2 * index];
        const std::uint16_t unit = bigEndian16(at);
        if (unit == 0) {
            break;
        }
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        text += isSurrogate ? fromSurrogate(unit, at + 2) : static_cast<OdChar>(unit);
        index += isSurrogate ? 3 : 1;
    }
    return text;
}

OdString readBytesAsText(MeteredStream& stream, std::uint16_t length) {
    std::vector<char> bytes(length + std::size_t{1});
    stream.getBytes(bytes.data(), length);
    return OdString(OdAnsiString(bytes.data()), OdCodePageId::kUtf8);
}

// A Turkish locale would make another letter of the I in "Italic".
OdString lowerCase(const OdString& text) {
    OdString lower;
    for (const OdChar character : text.view()) {
        const bool isCapital = character >= L'A' && character <= L'Z';
        lower += isCapital ? static_cast<OdChar>(character - L'A' + L'a') : character;
    }
    return lower.makeLower();
}

// The result of one walk over the records.
class Face {
  public:
    Face(FontNames& names, bool& isBold, bool& isItalic)
        : localNames(names), bold(isBold), italic(isItalic) {}

    void take(const NameRecord& record, const OdString& text) {
        if (text.isEmpty()) {
            return;
        }
        if (record.nameId == kFamily) {
            takeFamily(record, text);
        } else {
            takeSubfamily(lowerCase(text));
        }
    }

    bool hasName() const { return named; }
    const OdString& family() const { return typeface; }

  private:
    // A UTF-16 name in another language never becomes the typeface, an 8-bit name in any language
    // fills an empty one. The asymmetry decides under which name a font is known to drawings.
    void takeFamily(const NameRecord& record, const OdString& text) {
        if (!localNames.emplace(record.language, text).second) {
            return;
        }
        named = true;
        if (record.language == kEnglishUnitedStates ||
            (record.encoding != kUtf16 && typeface.isEmpty())) {
            typeface = text;
        }
    }

    void takeSubfamily(const OdString& text) {
        if (text.find(L"bold") >= 0) {
            bold = true;
        }
        // "Bold I" is an abbreviation.
        if (text.find(L"italic") >= 0 || text.find(L"bold i") >= 0) {
            italic = true;
        }
    }

    FontNames& localNames;
    bool& bold;
    bool& italic;
    OdString typeface;
    bool named = false;
};

// False when the place of the text, or the way back from it, isn't in the stream.
bool readRecordText(MeteredStream& stream, const NameRecord& record, std::uint32_t position,
                    Face& face) {
    const std::uint64_t next = stream.tell();
    if (!stream.seekTo(position)) {
        return false;
    }
    if (record.encoding == kUtf16) {
        face.take(record, readUtf16(stream, record.length));
    } else if (record.encoding != kUtf32) {
        face.take(record, readBytesAsText(stream, record.length));
    }
    return stream.seekTo(next);
}

void readNameRecords(MeteredStream& stream, std::uint32_t table, Face& face) {
    std::array<std::uint8_t, 6> header{};
    stream.getBytes(header.data(), header.size());
    const std::uint16_t count = bigEndian16(&header[2]);
    const std::uint32_t storage = table + bigEndian16(&header[4]);
    for (unsigned int index = 0; index < count; ++index) {
        std::array<std::uint8_t, 12> bytes{};
        stream.getBytes(bytes.data(), bytes.size());
        const NameRecord record(bytes);
        const bool isWanted = record.nameId == kFamily || record.nameId == kSubfamily;
        if (isWanted && !readRecordText(stream, record, storage + record.offset, face)) {
            break;
        }
    }
}

}  // namespace

bool readTtfNameTable(MeteredStream& stream, OdString& typeface, FontNames& localNames, bool& bold,
                      bool& italic) {
    static bool reported = false;
    const auto tableCount = readOffsetTable(stream);
    const auto table = tableCount ? findNameTable(stream, *tableCount) : std::nullopt;
    if (!table || !stream.seekTo(*table)) {
        return false;
    }
    Face face(localNames, bold, italic);
    readNameRecords(stream, *table, face);
    if (!face.hasName()) {
        return false;
    }
    if (face.family().isEmpty()) {
        assertOnce(reported, "!typeFace.isEmpty()", __LINE__);
    }
    typeface = face.family();
    return true;
}

bool readTtfNameTable(const OdStreamBufPtr& stream, OdString& typeface, FontNames& localNames,
                      bool& bold, bool& italic) {
    MeteredStream metered(stream);
    return readTtfNameTable(metered, typeface, localNames, bold, italic);
}

}  // namespace vosi
