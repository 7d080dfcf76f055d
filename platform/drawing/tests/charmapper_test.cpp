#include "testsupport.h"

namespace {

int mapped(int windowsCodePage) {
    return static_cast<int>(OdCharMapper::ansiCpToAcadCp(windowsCodePage));
}

}  // namespace

TEST(CharMapper, KnowsTheNumbersThatDrawingsUse) {
    EXPECT_EQ(mapped(20127), 1);
    EXPECT_EQ(mapped(1250), 28);
    EXPECT_EQ(mapped(1252), 30);
    EXPECT_EQ(mapped(1253), 32);
    EXPECT_EQ(mapped(1257), 36);
    EXPECT_EQ(mapped(936), 39);
    EXPECT_EQ(mapped(65001), 46);
    EXPECT_EQ(mapped(0), 0);
}

TEST(CharMapper, PutsTheRowsOfAFileBeforeItsOwn) {
    const TempFolder folder;
    const OdString good =
        folder.write("good", "\xEF\xBB\xBF# a map\r\n\r\n 936\t40 \r\n12345 7\n936 41\n# the end");
    EXPECT_EQ(OdCharMapper::initialize(good), eOk);
    EXPECT_EQ(mapped(936), 40);
    EXPECT_EQ(mapped(12345), 7);
    EXPECT_EQ(mapped(1252), 30);
    EXPECT_EQ(OdCharMapper::initialize(folder.write("empty", "")), eOk);
    EXPECT_EQ(mapped(936), 39);
}

TEST(CharMapper, TakesAFileWholeOrNotAtAll) {
    const TempFolder folder;
    ASSERT_EQ(OdCharMapper::initialize(folder.write("good", "936 40\n")), eOk);
    for (const char* bad : {"936 1\nx", "936 1 2", "936", "93610", "-936 1", "936 -1",
                            "936 99999999999", "936x 1", "\xFF\xFE"}) {
        EXPECT_EQ(OdCharMapper::initialize(folder.write("bad", bad)), eInvalidInput) << bad;
    }
    EXPECT_EQ(OdCharMapper::initialize(folder.path("missing")), eCantOpenFile);
    EXPECT_EQ(OdCharMapper::initialize(folder.path("")), eCantOpenFile);
    EXPECT_EQ(mapped(936), 40);
}
