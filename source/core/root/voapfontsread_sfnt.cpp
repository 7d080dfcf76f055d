// One face of an sfnt file: from its offset table to the records of its "name" table.
#include <array>
#include <cstring>
#include <cwctype>
#include <optional>
#include <string_view>

#include "bigendian.h"
#include "entryblocks.h"
#include "fontassertion.h"
#include "meteredstream.h"
#include "scratchbuffer.h"
#include "voapfontsread.h"

namespace vosi {

namespace {

constexpr std::uint16_t kEnglishUnitedStates = 1033;

enum NameId : std::uint16_t { kFamily = 1, kSubfamily = 2 };
enum Encoding : std::uint16_t { kUtf16 = 1, kUtf32 = 10 };

constexpr std::uint32_t tagOf(const char (&letters)[5]) {
    std::uint32_t tag = 0;
    for (const char letter : std::string_view(letters)) {
        tag = tag << 8 | static_cast<unsigned char>(letter);
    }
    return tag;
}

constexpr std::uint32_t kOpenTypeTag = tagOf("otto");
constexpr std::uint32_t kTrueTypeTag = tagOf("true");
constexpr std::uint32_t kNameTag = tagOf("name");

// Whether the tag is the one in small letters, in any case.
bool tagIs(const std::uint8_t* tag, std::uint32_t letters) {
    constexpr std::uint32_t kCaseBits = 0x20202020;
    return (bigEndian32(tag) | kCaseBits) == letters;
}

// The number of tables, nothing when this is no sfnt file.
std::optional<std::uint16_t> readOffsetTable(MeteredStream& stream) {
    static bool reported = false;
    std::array<std::uint8_t, 12> bytes{};
    stream.getBytes(bytes.data(), bytes.size());
    const bool isVersion1 = bigEndian32(bytes.data()) == 0x00010000;
    if (!isVersion1 && !tagIs(bytes.data(), kOpenTypeTag) && !tagIs(bytes.data(), kTrueTypeTag)) {
        assertOnce(reported, "Invalid Execution.", __LINE__);
        return std::nullopt;
    }
    return bigEndian16(&bytes[4]);
}

// The offset of the "name" table from the start of the file.
std::optional<std::uint32_t> findNameTable(MeteredStream& stream, std::uint16_t tableCount) {
    static bool reported = false;
    // A block holds the tables of nearly all fonts.
    EntryBlocks<16, 30> entries(stream, tableCount);
    for (const std::uint8_t* tag = entries.next(); tag && *tag != 0; tag = entries.next()) {
        if (tagIs(tag, kNameTag)) {
            return bigEndian32(tag + 8);
        }
    }
    assertOnce(reported, "bFound", __LINE__);
    return std::nullopt;
}

struct NameRecord {
    static constexpr std::size_t kSize = 12;

    explicit NameRecord(const std::uint8_t* bytes)
        : encoding(bigEndian16(bytes + 2)),
          language(bigEndian16(bytes + 4)),
          nameId(bigEndian16(bytes + 6)),
          length(bigEndian16(bytes + 8)),
          offset(bigEndian16(bytes + 10)) {}

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

// The text of one record after the other.
class RecordText {
  public:
    /// Takes the record's text from the stream's position.
    void read(MeteredStream& stream, const NameRecord& record);
    std::wstring_view view() const { return {text, length}; }
    /// The text in small letters, and no longer as it was read.
    std::wstring_view lowered();

  private:
    void takeUtf16(const std::uint8_t* bytes, std::size_t unitCount);
    void takeUtf8(const char* bytes);

    ScratchBuffer<std::uint8_t, 512> bytesRead;
    ScratchBuffer<wchar_t, 256> characters;
    wchar_t* text = nullptr;
    std::size_t length = 0;
};

void RecordText::read(MeteredStream& stream, const NameRecord& record) {
    const std::size_t unitCount = record.length / 2u;
    // Two units of zeros behind the text: its end, and what a surrogate in last place reads beyond.
    std::uint8_t* bytes = bytesRead.take(2 * (unitCount + 2));
    std::memset(bytes + 2 * unitCount, 0, 4);
    stream.getBytes(bytes, record.length);
    if (record.encoding == kUtf16) {
        bytes[2 * unitCount] = 0;
        takeUtf16(bytes, unitCount);
    } else {
        takeUtf8(reinterpret_cast<const char*>(bytes));
    }
}

void RecordText::takeUtf16(const std::uint8_t* bytes, std::size_t unitCount) {
    text = characters.take(unitCount);
    wchar_t* out = text;
    const std::uint8_t* const end = bytes + 2 * unitCount;
    for (const std::uint8_t* at = bytes; at < end;) {
        const std::uint32_t unit = bigEndian16(at);
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        if (unit == 0) {
            break;
        }
        *out++ = isSurrogate ? fromSurrogate(unit, at + 2) : static_cast<OdChar>(unit);
        at += isSurrogate ? 6 : 2;
    }
    length = static_cast<std::size_t>(out - text);
}

void RecordText::takeUtf8(const char* bytes) {
    const OdString wide(OdAnsiString(bytes), OdCodePageId::kUtf8);
    length = wide.view().size();
    text = characters.take(length);
    wide.view().copy(text, length);
}

// A Turkish locale would make another letter of the I in "Italic".
std::wstring_view RecordText::lowered() {
    for (wchar_t* character = text; character != text + length; ++character) {
        if (*character >= L'A' && *character <= L'Z') {
            *character += L'a' - L'A';
        } else if (*character > 0x7F) {
            *character = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(*character)));
        }
    }
    return view();
}

// The result of one walk over the records.
class Face {
  public:
    Face(FontNames& names, bool& isBold, bool& isItalic)
        : localNames(names), bold(isBold), italic(isItalic) {}

    void take(const NameRecord& record, RecordText& text) {
        if (text.view().empty()) {
            return;
        }
        if (record.nameId == kFamily) {
            takeFamily(record, text.view());
        } else {
            takeSubfamily(text.lowered());
        }
    }

    bool hasName() const { return named; }
    const OdString& family() const { return typeface; }

  private:
    // A UTF-16 name in another language never becomes the typeface, an 8-bit name in any language
    // fills an empty one. The asymmetry decides under which name a font is known to drawings.
    void takeFamily(const NameRecord& record, std::wstring_view text) {
        const auto [name, isNew] = localNames.try_emplace(record.language, text);
        if (!isNew) {
            return;
        }
        named = true;
        if (record.language == kEnglishUnitedStates ||
            (record.encoding != kUtf16 && typeface.isEmpty())) {
            typeface = name->second;
        }
    }

    void takeSubfamily(std::wstring_view text) {
        const auto says = [text](std::wstring_view word) { return text.find(word) != text.npos; };
        bold = bold || says(L"bold");
        // "Bold I" is an abbreviation.
        italic = italic || says(L"italic") || says(L"bold i");
    }

    FontNames& localNames;
    bool& bold;
    bool& italic;
    OdString typeface;
    bool named = false;
};

void readNameRecords(MeteredStream& stream, std::uint32_t table, Face& face) {
    std::array<std::uint8_t, 6> header{};
    stream.getBytes(header.data(), header.size());
    const std::uint16_t count = bigEndian16(&header[2]);
    const std::uint32_t storage = table + bigEndian16(&header[4]);
    EntryBlocks<NameRecord::kSize, 64> records(stream, count);
    RecordText text;
    while (const std::uint8_t* bytes = records.next()) {
        const NameRecord record(bytes);
        if (record.nameId != kFamily && record.nameId != kSubfamily) {
            continue;
        }
        if (!stream.seekTo(std::uint32_t{storage + record.offset})) {
            break;
        }
        if (record.encoding != kUtf32) {
            text.read(stream, record);
            face.take(record, text);
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
