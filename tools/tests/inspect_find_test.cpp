// vemo-inspect find: where a file is found, and the places before it.
#include "inspectsupport.h"

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;

// Hints of the search.
constexpr const char* kShx = "2";
constexpr const char* kDefault = "0";

using InspectFindTest = InspectTest;

TEST_F(InspectFindTest, ByNameAndHint) {
    const auto font = answer({"find", "--hint", kShx, "TXT.SHX", "--", builtProgram()}, "find");
    EXPECT_THAT(textAt(font, "/found"), EndsWith("/bin/Fonts/txt.shx"));
    const auto& tried = font["tried"];
    EXPECT_EQ(textAt(tried, "/0/why"), "nothing there");
    EXPECT_EQ(textAt(tried[tried.Size() - 1], "/why"), "found");
    EXPECT_EQ(textAt(tried[tried.Size() - 1], "/found"), textAt(font, "/found"));
}

TEST_F(InspectFindTest, InTheFolderOfTheDrawing) {
    fs::create_directory(scratch.path("plans"));
    scratch.write("plans/detail.lin", "");
    const auto found = answer(
        {"find", "--drawing", "plans/house.dxf", "detail.lin", "--", builtProgram()}, "find");
    EXPECT_EQ(textAt(found, "/found"), scratch.path("plans/detail.lin"));
    const auto without = answer({"find", "detail.lin", "--", builtProgram()}, "find");
    EXPECT_EQ(at(without, "/found"), "null");
}

TEST_F(InspectFindTest, NotFoundTellsEveryPlaceAndWhy) {
    const std::string there = scratch.path("there/");
    fs::create_directory(there);
    const std::string program = programWith(R"({"Core": {"CoreLibrary": ["stage"], )"
                                            R"("paths": {"supportPaths": [")" +
                                            there + R"(", ")" + scratch.path("gone/") +
                                            R"("]}}, "User": {"version": 256}})");
    const std::vector<std::string> line = {"find",      "--hint",      kDefault, "none.lin",
                                           "--modules", testModules(), "--",     program};
    const auto found = answer(line, "find");
    EXPECT_EQ(at(found, "/found"), "null");
    for (const rapidjson::Value& place : found["tried"].GetArray()) {
        EXPECT_EQ(at(place, "/found"), "null");
    }
    const rapidjson::Value* empty = entry(found, "/tried", "place", there);
    ASSERT_TRUE(empty);
    EXPECT_EQ(textAt(*empty, "/why"), "no such file in it");
    const rapidjson::Value* gone = entry(found, "/tried", "place", scratch.path("gone/"));
    ASSERT_TRUE(gone);
    EXPECT_EQ(textAt(*gone, "/why"), "the folder isn't there");
    const vemoapp::RunResult text = run(line);
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(text.output, HasSubstr("not found\n\nTried, in order:\n"));
    EXPECT_THAT(text.output,
                HasSubstr("  " + scratch.path("gone/") + ": the folder isn't there\n"));
}

TEST_F(InspectFindTest, ByTypeface) {
    const std::vector<std::string> behind = {"--sysfonts", "/usr/share/fonts/truetype/dejavu", "--",
                                             builtProgram()};
    const auto find = [&](std::vector<std::string> line) {
        line.insert(line.end(), behind.begin(), behind.end());
        return answer(line, "find");
    };
    EXPECT_THAT(textAt(find({"find", "--typeface", "DejaVu Sans", "--bold"}), "/found"),
                EndsWith("/DejaVuSans-Bold.ttf"));
    EXPECT_THAT(textAt(find({"find", "--typeface", "DejaVu Serif"}), "/found"),
                EndsWith("/DejaVuSerif.ttf"));
    EXPECT_EQ(at(find({"find", "--typeface", "Nobody"}), "/found"), "null");
}

TEST_F(InspectFindTest, ARunThatRaisesHasNoAnswer) {
    fs::create_directory(scratch.path("fonts"));
    scratch.write("fonts/cut.shx", "Drafting86 uni");
    const vemoapp::RunResult result =
        run({"find", "--json", "--sysfonts", "fonts", "txt.shx", "--", builtProgram()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("vemo-inspect: End of file: "));
}

}  // namespace
