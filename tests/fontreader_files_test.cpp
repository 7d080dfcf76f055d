// Reading of the faces of font files and collections, made by the test and those of real fonts.
#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/outcomes.h"
#include "support/sfntbuilder.h"
#include "support/testfolder.h"
#include "voapfontsread.h"

namespace {

using fontfile::bytes32, fontfile::kChinese, fontfile::kEnglish;
using fontfile::Face, fontfile::family, fontfile::subfamily;
using fontfile::sfnt, fontfile::collection;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FontFiles : public testing::Test {
  protected:
    FontFiles() { odInitialize(&services); }
    ~FontFiles() override { odUninitialize(); }

    bool readPath(const std::string& path) {
        return vosi::readTtfDescriptors(OdUtf8StringToOdString(path), records);
    }
    bool read(const std::string& bytes) {
        records.clear();
        return readPath(folder.file("test.ttf", bytes));
    }
    // The typefaces, each with its style behind it: "Arrow", "Arrow/B", "Arrow/BI".
    std::vector<std::string> faces() const {
        std::vector<std::string> result;
        for (const vosi::TtfFaceRecord& record : records) {
            const std::string style =
                std::string(record.isBold() ? "B" : "") + (record.isItalic() ? "I" : "");
            result.push_back(OdStringToUtf8String(record.typeface).str() +
                             (style.empty() ? "" : "/" + style));
        }
        return result;
    }

    OdStaticRxObject<ExSystemServices> services;
    TestFolder folder;
    std::vector<vosi::TtfFaceRecord> records;
};

Face faceOf(const std::string& name, const std::string& style = "Regular") {
    return {{subfamily(style), family(name)}};
}

// Where the collection's header says that a face is.
std::size_t entryOf(std::size_t face) {
    return 12 + 4 * face;
}

TEST_F(FontFiles, GiveTheirFace) {
    EXPECT_TRUE(read(sfnt(faceOf("Arrow", "Bold"))));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].flags, 0x02000000u);
    EXPECT_EQ(records[0].typeface, L"Arrow");
    EXPECT_TRUE(records[0].fileName.isEmpty());
    EXPECT_EQ(records[0].reserved, 0);
    EXPECT_EQ(records[0].localNames, (vosi::FontNames{{kEnglish, L"Arrow"}}));

    // Records are added, and one file's style is nothing to the next.
    EXPECT_TRUE(readPath(folder.file("Pfeil \xE7\xAE\xAD.otf", sfnt(faceOf("Dart", "Italic")))));
    EXPECT_THAT(faces(), ElementsAre("Arrow/B", "Dart/I"));
    EXPECT_EQ(records[1].flags, 0x01000000u);
}

TEST_F(FontFiles, ThatCannotBeReadGiveNothing) {
    EXPECT_FALSE(readPath(""));
    EXPECT_FALSE(readPath(folder.path("absent.ttf")));
    EXPECT_FALSE(readPath(folder.folder("folder.ttf")));
    EXPECT_FALSE(read(sfnt(Face{.names = {}})));
    const std::string bytes = sfnt(faceOf("Arrow"));
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_FALSE(read(bytes.substr(0, length))) << length;
        EXPECT_THAT(records, IsEmpty()) << length;
    }
}

TEST_F(FontFiles, OfManyFacesCarryStylesOn) {
    const std::vector<Face> styles{faceOf("A"), faceOf("B", "Bold"), faceOf("C", "Italic"),
                                   faceOf("D")};
    EXPECT_TRUE(read(collection(styles)));
    EXPECT_THAT(faces(), ElementsAre("A", "B/B", "C/BI", "D/BI"));
    EXPECT_TRUE(read(collection(styles, 0x00020000)));
    EXPECT_EQ(records.size(), 4u);
}

TEST_F(FontFiles, OfManyFacesHaveAKnownVersion) {
    const auto reported = errorLinesOf([&] {
        for (const std::size_t version : {0u, 0x00010001u, 0x00020001u, 0x00030000u, 0x01000000u}) {
            EXPECT_FALSE(read(collection({faceOf("A")}, version))) << version;
        }
    });
    EXPECT_THAT(reported, ElementsAre(HasSubstr("Invalid Execution.")));
    EXPECT_FALSE(read(collection({faceOf("A")}).replace(0, 4, "TTCF")));
}

TEST_F(FontFiles, BelieveNoCount) {
    const std::string bytes = collection({faceOf("A"), faceOf("B")});
    const std::size_t room = (bytes.size() - entryOf(0)) / 4;
    for (const std::size_t count :
         {std::size_t{0}, room + 1, std::size_t{0x40000000}, std::size_t{0xFFFFFFFF}}) {
        EXPECT_FALSE(read(std::string(bytes).replace(8, 4, bytes32(count)))) << count;
        EXPECT_THAT(records, IsEmpty()) << count;
    }
    EXPECT_TRUE(read(std::string(bytes).replace(8, 4, bytes32(1))));
    EXPECT_THAT(faces(), ElementsAre("A"));
}

TEST_F(FontFiles, SkipAFaceThatIsNone) {
    Face unknown = faceOf("B", "Bold");
    unknown.version = "typ1";
    EXPECT_TRUE(read(collection({faceOf("A"), unknown, {}, faceOf("C")})));
    EXPECT_THAT(faces(), ElementsAre("A", "C"));
    EXPECT_TRUE(read(collection({faceOf("A"), unknown})));
    EXPECT_FALSE(read(collection({unknown, unknown})));
}

TEST_F(FontFiles, KeepTheFacesBeforeABrokenOne) {
    const std::string bytes = collection({faceOf("A"), faceOf("B"), faceOf("C")});
    EXPECT_FALSE(read(std::string(bytes).replace(entryOf(1), 4, bytes32(bytes.size() + 1))));
    EXPECT_THAT(faces(), ElementsAre("A"));
    EXPECT_FALSE(read(std::string(bytes).replace(entryOf(2), 4, bytes32(0xFFFFFFFF))));
    EXPECT_THAT(faces(), ElementsAre("A", "B"));
    EXPECT_FALSE(read(bytes.substr(0, bytes.size() - 1)));
    EXPECT_THAT(faces(), ElementsAre("A", "B"));
}

TEST_F(FontFiles, NameNoFaceWithoutEnd) {
    const Face face = faceOf("Arrow", "Bold");
    const auto naming = [&face](std::size_t times) {
        const std::size_t faceAt = entryOf(times);
        std::string bytes = "ttcf" + bytes32(0x00010000) + bytes32(times);
        for (std::size_t count = 0; count < times; ++count) {
            bytes += bytes32(faceAt);
        }
        return bytes + sfnt(face, faceAt);
    };
    EXPECT_TRUE(read(naming(500)));
    EXPECT_EQ(records.size(), 500u);

    const std::string bytes = naming(20000);
    EXPECT_FALSE(read(bytes));
    EXPECT_LE(records.size() * sfnt(face).size(), bytes.size() + 65536);
    EXPECT_GT(records.size(), 500u) << "those before the limit stay";
}

// ---- real fonts ----

// The file of this name among the system's fonts.
std::string systemFont(const std::string& name) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(
             "/usr/share/fonts", std::filesystem::directory_options::skip_permission_denied)) {
        if (entry.path().filename() == name) {
            return entry.path();
        }
    }
    ADD_FAILURE() << name << " isn't below /usr/share/fonts; scripts/setup installs its package";
    return {};
}

TEST_F(FontFiles, OfTheSystemAreUnderstood) {
    EXPECT_TRUE(readPath(systemFont("DejaVuSans-Bold.ttf")));
    EXPECT_TRUE(readPath(systemFont("LiberationSerif-BoldItalic.ttf")));
    EXPECT_TRUE(readPath(systemFont("DejaVuSansMono.ttf")));
    EXPECT_THAT(faces(), ElementsAre("DejaVu Sans/B", "Liberation Serif/BI", "DejaVu Sans Mono"));
    EXPECT_EQ(records[0].localNames[kEnglish], L"DejaVu Sans");

    records.clear();
    EXPECT_TRUE(readPath(systemFont("wqy-microhei.ttc")));
    ASSERT_THAT(faces(), ElementsAre("WenQuanYi Micro Hei", "WenQuanYi Micro Hei Mono"));
    EXPECT_EQ(records[0].localNames[kChinese], L"文泉驿微米黑");
    EXPECT_EQ(records[1].localNames[kChinese], L"文泉驿等宽微米黑");
}

}  // namespace
