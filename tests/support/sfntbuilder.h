// Font files made byte by byte: SHX headers, and sfnt faces and collections that hold what a reader
// of names looks at and nothing else. What can't be said here is patched into the bytes.
//
//     folder.file("arrow.ttf", fontfile::sfnt({{fontfile::family("Arrow"),
//                                               fontfile::subfamily("Bold")}}));
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace fontfile {

constexpr std::uint16_t kEnglish = 0x0409;
constexpr std::uint16_t kGerman = 0x0407;
constexpr std::uint16_t kFrench = 0x040C;
constexpr std::uint16_t kChinese = 0x0804;

enum NameId : std::uint16_t { kFamily = 1, kSubfamily = 2, kFullName = 4 };

/// The value as sfnt files have it, high byte first.
inline std::string bytes16(std::size_t value) {
    if (value > 0xFFFF) {
        throw std::length_error("more than 16 bits");
    }
    return {static_cast<char>(value >> 8), static_cast<char>(value)};
}
inline std::string bytes32(std::size_t value) {
    return bytes16(value >> 16) + bytes16(value & 0xFFFF);
}

/// Text as UTF-16BE.
inline std::string utf16(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += bytes16(unit);
    }
    return bytes;
}
inline std::string utf16(std::string_view ascii) {
    return utf16(std::u16string(ascii.begin(), ascii.end()));
}

/// A record of the name table; the text is what the file holds, whatever the encoding.
struct NameRecord {
    std::uint16_t platform = 3;
    std::uint16_t encoding = 1;
    std::uint16_t language = kEnglish;
    std::uint16_t nameId = kFamily;
    std::string text = {};
};

/// Names in UTF-16, from ASCII or char16_t text.
template <class Text>
NameRecord family(const Text& text, std::uint16_t language = kEnglish) {
    return {3, 1, language, kFamily, utf16(text)};
}
template <class Text>
NameRecord subfamily(const Text& text, std::uint16_t language = kEnglish) {
    return {3, 1, language, kSubfamily, utf16(text)};
}

/// Names in 8-bit text.
inline NameRecord family8(const std::string& bytes, std::uint16_t language = 0) {
    return {1, 0, language, kFamily, bytes};
}
inline NameRecord subfamily8(const std::string& bytes, std::uint16_t language = 0) {
    return {1, 0, language, kSubfamily, bytes};
}

struct Face {
    std::vector<NameRecord> names = {};
    /// Four bytes: a version or a tag.
    std::string version = bytes32(0x00010000);
    std::string nameTag = "name";
    /// Tags of tables in front of the name table, each with four bytes in it.
    std::vector<std::string> tablesBefore = {};
};

/// The name table alone; its texts lie behind the records in the records' order.
inline std::string nameTable(const std::vector<NameRecord>& names) {
    std::string records;
    std::string texts;
    for (const NameRecord& name : names) {
        records += bytes16(name.platform) + bytes16(name.encoding) + bytes16(name.language) +
                   bytes16(name.nameId) + bytes16(name.text.size()) + bytes16(texts.size());
        texts += name.text;
    }
    return bytes16(0) + bytes16(names.size()) + bytes16(6 + records.size()) + records + texts;
}

/// The offset table and the directory of a face whose name table is at this place in the file.
inline std::string directory(const Face& face, std::size_t nameTableAt) {
    const std::size_t others = face.tablesBefore.size();
    std::string bytes = face.version + bytes16(others + 1) + std::string(6, '\0');
    std::size_t at = nameTableAt - 4 * others;
    for (const std::string& tag : face.tablesBefore) {
        bytes += tag + bytes32(0) + bytes32(at) + bytes32(4);
        at += 4;
    }
    return bytes + face.nameTag + bytes32(0) + bytes32(at) + bytes32(nameTable(face.names).size());
}

/// The face as it stands in a file at the given place.
inline std::string sfnt(const Face& face, std::size_t start = 0) {
    const std::size_t others = face.tablesBefore.size();
    const std::size_t nameTableAt = start + 12 + 16 * (others + 1) + 4 * others;
    return directory(face, nameTableAt) + std::string(4 * others, '\xFF') + nameTable(face.names);
}

inline std::string collection(const std::vector<Face>& faces, std::size_t version = 0x00010000) {
    std::string header = "ttcf" + bytes32(version) + bytes32(faces.size());
    const std::size_t start = header.size() + 4 * faces.size();
    std::string body;
    for (const Face& face : faces) {
        header += bytes32(start + body.size());
        body += sfnt(face, start + body.size());
    }
    return header + body;
}

/// An SHX file of this header text, such as "Drafting86 unifont 1.0", with zeros behind it.
inline std::string shx(const std::string& text) {
    return text + "\r\n\x1a" + std::string(64, '\0');
}

}  // namespace fontfile
