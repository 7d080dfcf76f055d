// Reading of the name table of one sfnt face, from streams.
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "support/outcomes.h"
#include "support/sfntbuilder.h"
#include "support/streams.h"
#include "voapfontsread.h"

namespace {

using fontfile::bytes16, fontfile::bytes32, fontfile::utf16;
using fontfile::directory, fontfile::Face, fontfile::sfnt;
using fontfile::family, fontfile::family8, fontfile::subfamily, fontfile::subfamily8;
using fontfile::kChinese, fontfile::kEnglish, fontfile::kFrench, fontfile::kGerman;
using fontfile::kFamily, fontfile::kFullName, fontfile::kSubfamily;
using fontfile::NameRecord, fontfile::nameTable;
using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

struct FaceRead {
    bool found = false;
    std::wstring typeface = {};
    vosi::FontNames names = {};
    bool bold = false;
    bool italic = false;
};

// Reads the face at the stream's position; `names` are there already.
FaceRead readFrom(const OdStreamBufPtr& stream, vosi::FontNames names = {}) {
    FaceRead face{.names = std::move(names)};
    OdString typeface = L"untouched";
    face.found = vosi::readTtfNameTable(stream, typeface, face.names, face.bold, face.italic);
    face.typeface = typeface.view();
    return face;
}

FaceRead readBytes(const std::string& bytes) {
    return readFrom(streamOf(bytes));
}

FaceRead readNames(const std::vector<NameRecord>& names) {
    return readBytes(sfnt({names}));
}

std::wstring typefaceOf(const std::vector<NameRecord>& names) {
    return readNames(names).typeface;
}

TEST(SfntFace, IsToldByItsVersion) {
    const auto readVersion = [](const std::string& version) {
        return readBytes(sfnt({.names = {family("Arrow")}, .version = version}));
    };
    for (const auto& version : {bytes32(0x10000), "OTTO"s, "oTto"s, "true"s, "TRUE"s}) {
        EXPECT_TRUE(readVersion(version).found) << version;
    }
    const auto reported = errorLinesOf([&] {
        for (const auto& version : {bytes32(0x10001), bytes32(0x20000), "typ1"s, "ttcf"s}) {
            EXPECT_FALSE(readVersion(version).found) << version;
            EXPECT_EQ(readVersion(version).typeface, L"untouched");
        }
    });
    EXPECT_THAT(reported, ElementsAre(HasSubstr("Invalid Execution.")));
}

TEST(SfntFace, HasItsNameTableInTheDirectory) {
    Face face{.names = {family("Arrow")}, .tablesBefore = {"OS/2", "nama", "xame"}};
    for (const char* tag : {"name", "NAME", "nAmE"}) {
        face.nameTag = tag;
        EXPECT_EQ(readBytes(sfnt(face)).typeface, L"Arrow") << tag;
    }
    EXPECT_FALSE(readNames({}).found);

    const auto reported = errorLinesOf([&] {
        EXPECT_FALSE(readBytes(sfnt(face).replace(4, 2, bytes16(3))).found);
        face.tablesBefore[1] = "\0ame"s;
        EXPECT_FALSE(readBytes(sfnt(face)).found);
    });
    EXPECT_THAT(reported, ElementsAre(HasSubstr("bFound")));
}

TEST(SfntFace, RaisesWhereverTheFileIsCut) {
    const std::string bytes = sfnt({.names = {family8("Arrow"), subfamily("Bold"), family("Arrow")},
                                    .tablesBefore = {"OS/2"}});
    EXPECT_TRUE(readBytes(bytes).found);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_EQ(raisedBy([&] { readBytes(bytes.substr(0, length)); }), eEndOfFile) << length;
    }
}

// More entries are promised than the file holds: what stands in it counts, up to the first that
// isn't whole.
TEST(SfntFace, IsReadUpToTheFilesEnd) {
    const Face face{.names = {family8("Arrow")}};
    const std::string names = nameTable(face.names);
    const std::string tables = directory(face, 0).replace(4, 2, bytes16(500));
    const auto stream = streamOf(names + tables + "OS");
    stream->seek(static_cast<std::int64_t>(names.size()), kSeekFromStart);
    EXPECT_EQ(readFrom(stream).typeface, L"Arrow");

    // The text of the first record is its own first two bytes.
    const std::string record =
        "Ar" + bytes16(0) + bytes16(kEnglish) + bytes16(kFamily) + bytes16(2) + bytes16(6);
    const std::string cut =
        directory({}, 28) + bytes16(0) + bytes16(3) + bytes16(0) + record + record.substr(0, 11);
    vosi::FontNames read;
    OdString typeface;
    bool style = false;
    EXPECT_EQ(
        raisedBy([&] { vosi::readTtfNameTable(streamOf(cut), typeface, read, style, style); }),
        eEndOfFile);
    EXPECT_THAT(read, ElementsAre(testing::Pair(kEnglish, OdString(L"Ar"))));
}

// ---- names ----

TEST(SfntNames, AreTextOfTheirEncoding) {
    std::uint16_t platform = 0;
    const auto name = [&platform](std::uint16_t encoding, const std::string& text) {
        return typefaceOf({{platform, encoding, kEnglish, kFamily, text}});
    };
    for (platform = 0; platform < 5; ++platform) {
        EXPECT_EQ(name(1, utf16(u"Pfeil \u7BAD")), L"Pfeil \u7BAD");
        EXPECT_EQ(name(10, "Arrow"), L"untouched");
        for (const int encoding : {0, 2, 3, 9, 11, 0x101}) {
            EXPECT_EQ(name(static_cast<std::uint16_t>(encoding), "Pf\xC3\xB6hl"), L"Pf\u00F6hl");
        }
    }
    EXPECT_EQ(name(1, utf16("Arrow") + "x"), L"Arrow");
    EXPECT_EQ(name(1, utf16(u"Ar\0row"sv)), L"Ar");
    EXPECT_EQ(name(0, "Ar\0row"s), L"Ar");

    // A name without text leaves its language to the next.
    EXPECT_EQ(typefaceOf({{.encoding = 0, .text = utf16("Wide")},
                          {.text = ""},
                          {.text = "x"},
                          {.text = bytes16(0) + utf16("Late")},
                          family("Arrow")}),
              L"Arrow");
}

TEST(SfntNames, HaveASurrogateTakeThreeUnits) {
    // Another text stands behind each, which is no part of it.
    const auto read = [](const std::u16string& units, const std::string& oddByte = "") {
        return typefaceOf({{.text = utf16(units) + oddByte}, family8("zzzz", kGerman)});
    };
    EXPECT_EQ(read({u'A', 0xD83D, 0xDE05, 0x4142, u'B'}), (std::wstring{L'A', 0x15905, L'B'}));
    EXPECT_EQ(read({0xD83D, 0, 0, u'B'}), (std::wstring{0x11800, L'B'}));
    for (const char* oddByte : {"", "x"}) {
        EXPECT_EQ(read({u'A', 0xD83D}, oddByte), (std::wstring{L'A', 0x11800}));
        EXPECT_EQ(read({u'A', 0xD83D, 0xDE05}, oddByte), (std::wstring{L'A', 0x11805}));
    }
    EXPECT_EQ(read({0xD800, 0xFFFF, 0xFF00}), (std::wstring{0x123FF}));
    EXPECT_EQ(read({0xDFFF}), (std::wstring{0x202000}));
    EXPECT_EQ(read({0xD7FF, 0xE000}), (std::wstring{0xD7FF, 0xE000}));
}

TEST(SfntNames, InOtherLanguagesAloneAreReportedOnce) {
    const auto reported = errorLinesOf([] {
        for (const char16_t* name : {u"\u7BAD", u"\u7BAD\u5934"}) {
            const FaceRead face = readNames({family(name, kChinese), family("Pfeil", kGerman)});
            EXPECT_TRUE(face.found);
            EXPECT_EQ(face.typeface, L"");
            EXPECT_EQ(face.names.size(), 2u);
        }
    });
    EXPECT_THAT(reported, ElementsAre(HasSubstr("!typeFace.isEmpty()")));
}

TEST(SfntNames, ChooseTheTypeface) {
    const NameRecord arrow = family("Arrow");
    const NameRecord arrow8 = family8("Arrow8", kEnglish);
    const NameRecord pfeil = family("Pfeil", kGerman);
    const NameRecord pfeil8 = family8("Pfeil8", kGerman);
    const NameRecord dard8 = family8("Dard8", kFrench);
    EXPECT_EQ(typefaceOf({pfeil, arrow}), L"Arrow");
    EXPECT_EQ(typefaceOf({pfeil8, arrow}), L"Arrow");
    EXPECT_EQ(typefaceOf({pfeil8, arrow8}), L"Arrow8");
    EXPECT_EQ(typefaceOf({arrow, pfeil8}), L"Arrow");
    EXPECT_EQ(typefaceOf({pfeil8, dard8}), L"Pfeil8");
    EXPECT_EQ(typefaceOf({pfeil, dard8}), L"Dard8");
    // The first name of a language stays.
    EXPECT_EQ(typefaceOf({arrow, arrow8}), L"Arrow");
    EXPECT_EQ(typefaceOf({arrow8, arrow}), L"Arrow8");
    EXPECT_EQ(typefaceOf({pfeil, pfeil8}), L"");
}

TEST(SfntNames, AreAddedToThoseThatAreThere) {
    const vosi::FontNames there{{kEnglish, L"Dart"}};
    FaceRead face = readFrom(streamOf(sfnt({{family("Arrow")}})), there);
    EXPECT_FALSE(face.found);
    EXPECT_EQ(face.typeface, L"untouched");
    EXPECT_EQ(face.names, there);

    face = readFrom(streamOf(sfnt({{family8("Pfeil", kGerman), family("Arrow")}})), there);
    EXPECT_EQ(face.typeface, L"Pfeil");
    EXPECT_EQ(face.names, (vosi::FontNames{{kGerman, L"Pfeil"}, {kEnglish, L"Dart"}}));
}

TEST(SfntNames, SayTheStyleInAnyLanguage) {
    const auto style = [](const NameRecord& name) {
        const FaceRead face = readNames({name, family("Bold Italic")});
        return std::pair(face.bold, face.italic);
    };
    EXPECT_EQ(style(subfamily("Regular")), std::pair(false, false));
    EXPECT_EQ(style(subfamily("SemiBOLD", kGerman)), std::pair(true, false));
    EXPECT_EQ(style(subfamily("ITALIC", kFrench)), std::pair(false, true));
    EXPECT_EQ(style(subfamily8("Bold Italic")), std::pair(true, true));
    EXPECT_EQ(style(subfamily8("Bold I")), std::pair(true, true));
    EXPECT_EQ(style(subfamily("Bold Oblique")), std::pair(true, false));
    EXPECT_EQ(style({.encoding = 10, .nameId = kSubfamily, .text = "Bold"}),
              std::pair(false, false));
    EXPECT_EQ(style({.nameId = kFullName, .text = utf16("Bold")}), std::pair(false, false));

    const FaceRead face = readNames({subfamily("Bold"), subfamily("Italic"), subfamily("Regular")});
    EXPECT_FALSE(face.found);
    EXPECT_TRUE(face.bold && face.italic);
}

// ---- places ----

TEST(SfntPlaces, WrapAroundAt32Bits) {
    const std::vector<NameRecord> names{subfamily("Bold"), family("Arrow")};
    constexpr std::uint64_t tableAt = 0xFFFFFFE0;
    const std::string table = nameTable(names);
    const std::size_t texts = 6 + 12 * names.size();
    const auto stream = newSparseStream(0x1'0000'1000);
    stream->put(0, directory({names}, tableAt));
    // The records go on beyond 4 GB, the texts are found near the start.
    stream->put(tableAt, table.substr(0, texts).replace(4, 2, bytes16(0x220)));
    stream->put(0x200, table.substr(texts));
    const FaceRead face = readFrom(stream);
    EXPECT_EQ(face.typeface, L"Arrow");
    EXPECT_TRUE(face.bold);
}

TEST(SfntPlaces, AreTheOnlyOnesRead) {
    constexpr std::uint64_t faceAt = 1000;
    constexpr std::uint64_t tableAt = 48 << 20;
    // The place of the last text needs more than 16 bits.
    const Face face{.names = {family("Arrow"),
                              {.nameId = kFullName, .text = std::string(40000, 'z')},
                              {.encoding = 10, .text = std::string(25500, 'z')},
                              subfamily8("Bold")},
                    .tablesBefore = {"OS/2", "glyf"}};
    const auto stream = newSparseStream(64 << 20);
    // The directory goes on behind the name table's entry; a block of it is read.
    const std::string tables = directory(face, tableAt);
    constexpr std::uint64_t directoryRead = 12 + 30 * 16;
    stream->put(faceAt, std::string(tables).replace(4, 2, bytes16(500)) + std::string(8000, 'z'));
    stream->put(tableAt, nameTable(face.names));
    stream->seek(faceAt, kSeekFromStart);
    stream->seeks.clear();
    const FaceRead result = readFrom(stream);
    EXPECT_EQ(result.typeface, L"Arrow");
    EXPECT_TRUE(result.bold);

    std::uint64_t count = 0;
    std::uint64_t end = 0;
    std::sort(stream->reads.begin(), stream->reads.end(),
              [](const auto& a, const auto& b) { return a.at < b.at; });
    for (const SparseStream::Read& read : stream->reads) {
        EXPECT_GE(read.at, end) << "read twice";
        end = read.at + read.count;
        count += read.count;
    }
    const std::uint64_t texts = tableAt + 6 + 12 * face.names.size();
    const std::uint64_t arrow = utf16("Arrow").size();
    EXPECT_EQ(count, directoryRead + texts - tableAt + arrow + std::string("Bold").size());
    EXPECT_THAT(stream->seeks, Not(Contains(texts + arrow))) << "the full name is wanted by nobody";
}

// ---- how much is read ----

// As many records as told, all of which name one text behind them.
std::string sharedText(std::size_t records, std::size_t length) {
    const std::string record = bytes16(1) + bytes16(0) + bytes16(kEnglish) + bytes16(kFamily) +
                               bytes16(length) + bytes16(0);
    std::string table = bytes16(0) + bytes16(records) + bytes16(0);
    for (std::size_t count = 0; count < records; ++count) {
        table += record;
    }
    return directory({}, 28) + table.replace(4, 2, bytes16(table.size())) +
           std::string(length, 'A');
}

TEST(SfntReading, GoesALongestTextBeyondTheLength) {
    EXPECT_EQ(readBytes(sharedText(2, 65535)).typeface, std::wstring(65535, 'A'));
    EXPECT_EQ(readBytes(sharedText(3, 32768)).typeface, std::wstring(32768, 'A'));
    EXPECT_EQ(raisedBy([] { readBytes(sharedText(3, 32769)); }), eFileInternalErr);
    EXPECT_EQ(readBytes(sharedText(5000, 13)).typeface, std::wstring(13, 'A'));
    EXPECT_EQ(raisedBy([] { readBytes(sharedText(5000, 14)); }), eFileInternalErr);
}

TEST(SfntReading, IsInProportionToTheLength) {
    const std::string bytes = sharedText(5000, 5000);
    const auto stream = newSparseStream(bytes.size());
    stream->put(0, bytes);
    EXPECT_EQ(raisedBy([&] { readFrom(stream); }), eFileInternalErr);
    std::uint64_t count = 0;
    for (const SparseStream::Read& read : stream->reads) {
        count += read.count;
    }
    EXPECT_LE(count, bytes.size() + 65536);
}

}  // namespace
