#include <gtest/gtest.h>

#include <vector>

#include "utils/paths.h"

namespace {

TEST(PathText, IsJoinedWithOneSlash) {
    struct Row {
        const char* first;
        const char* second;
        const char* joined;
    };
    const std::vector<Row> rows = {
        {"/a", "b", "/a/b"},
        {"/a/", "b", "/a/b"},
        {"/a", "/b", "/a/b"},
        {"/a//", "//b", "/a/b"},
        {"", "b", "b"},
        {"", "/b", "/b"},
        {"a", "", "a/"},
        {"a/", "", "a/"},
        {"", "", ""},
        {"/", "b", "/b"},
        {"/", "", "/"},
        {"%EXEPATH%", "x/y/", "%EXEPATH%/x/y/"},
        {"paths", "font", "paths/font"},
    };
    for (const Row& row : rows) {
        EXPECT_STREQ(voutCombinePath(row.first, row.second), row.joined)
            << row.first << " + " << row.second;
    }
}

TEST(PathText, IsSplitAtBothSeparators) {
    struct Row {
        const char* path;
        const char* parent;
        const char* name;
    };
    const std::vector<Row> rows = {
        {"/a/b/c", "/a/b/", "c"},
        {"c", "", "c"},
        {"/a/b/", "/a/b/", ""},
        {"/c", "/", "c"},
        {"", "", ""},
        {"C:\\dir\\字体.shx", "C:\\dir\\", "字体.shx"},
        {"a/b\\c.dwg", "a/b\\", "c.dwg"},
        {"a\\b/c.dwg", "a\\b/", "c.dwg"},
    };
    for (const Row& row : rows) {
        EXPECT_STREQ(voutGetParentDir(row.path), row.parent) << row.path;
        EXPECT_STREQ(voutGetFileName(row.path), row.name) << row.path;
        EXPECT_STREQ(voutGetLastFileNameInPath(row.path), row.name) << row.path;
        const OdString wide = OdUtf8StringToOdString(row.path);
        EXPECT_TRUE(voutGetParentDirW(wide) == OdUtf8StringToOdString(row.parent)) << row.path;
        EXPECT_TRUE(voutGetLastFileNameInPathW(wide) == OdUtf8StringToOdString(row.name))
            << row.path;
    }
}

TEST(PathText, LosesOneExtension) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"/a.d/libmain.so", "libmain"},
        {"a.tar.gz", "a.tar"},
        {"plain", "plain"},
        {"/x/.profile", ".profile"},
        {".a.b", ".a"},
        {"..", ".."},
        {"name.", "name"},
        {"C:\\x.y\\z", "z"},
        {"dir.d/", ""},
    };
    for (const auto& [path, stem] : rows) {
        EXPECT_STREQ(voutGetFileNoExtName(path), stem) << path;
    }
}

TEST(TimeText, ReadsWhatTheCompilerWrites) {
    EXPECT_EQ(voutStrToTime("Jul 15 2021 04:22:04"), 1626322924);
    EXPECT_EQ(voutStrToTime("Jan  1 1970 00:00:09"), 9);
    EXPECT_EQ(voutStrToTime("Feb 29 2024 23:59:59"), 1709251199);
    // Beyond what nanoseconds since 1970 can say.
    EXPECT_EQ(voutStrToTime("Jan  1 0001 00:00:00"), -62135596800);
    EXPECT_EQ(voutStrToTime("Dec 31 9999 23:59:59"), 253402300799);
    EXPECT_GT(voutStrToTime(__DATE__ " " __TIME__), 1700000000);
}

TEST(TimeText, RefusesEveryOtherText) {
    for (const char* text :
         {"", "Jul", "Jul 15 2021", "Jul 15 2021 04:22:04 ", " Jul 15 2021 04:22:04",
          "jul 15 2021 04:22:04", "Feb 30 2021 04:22:04", "Jul 15 2021 24:00:00",
          "Jul 15 2021 04:60:00", "Jul 15 2021 4:22:04", "Jul 15 -021 04:22:04",
          "Jul 15 2021 04:22:0", "Jul 115 2021 04:22:04", "Xyz 15 2021 04:22:04"}) {
        EXPECT_EQ(voutStrToTime(text), -1) << text;
    }
}

}  // namespace
