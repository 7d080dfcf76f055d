// The small readers: lines, words, alias files and scripts.
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "aliasfile.h"
#include "linereader.h"
#include "scriptfile.h"
#include "text.h"

namespace vemoapp {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Optional;

TEST(LineReader, BoundsALineAndGoesOnBehindIt) {
    std::istringstream stream("four\r\nmuch too long\nend");
    LineReader lines(stream, 5);
    std::string line;
    EXPECT_EQ(lines.next(line), LineReader::kLine);
    EXPECT_EQ(line, "four");
    EXPECT_EQ(lines.next(line), LineReader::kTooLong);
    EXPECT_EQ(lines.next(line), LineReader::kLine);
    EXPECT_EQ(line, "end");
    EXPECT_EQ(lines.lineNumber(), 3U);
    EXPECT_EQ(lines.next(line), LineReader::kEnd);
}

TEST(Text, QuotesKeepBlanksTogether) {
    EXPECT_THAT(splitWords("  OPEN \"my plan.dxf\"\tb\"c d\" \"\""),
                ElementsAre("OPEN", "my plan.dxf", "bc d", ""));
    EXPECT_THAT(splitWords(" \t"), ElementsAre());
}

TEST(AliasFile, TakesLinesAndNamesTheBadOnes) {
    std::istringstream stream(
        "; comment\r\n"
        "o,  *open   ; opens\n"
        "\n"
        "Q,*QUIT\n"
        "Q, *STATUS\n"
        "X, QUIT\n"
        "just words\n"
        ", *OPEN\n"
        "Y, *\n"
        "Z, *" +
        std::string(5000, 'Z'));
    AliasTable table = readAliases(stream);
    EXPECT_EQ(table.commands.at("O"), "OPEN");
    EXPECT_EQ(table.commands.at("Q"), "STATUS");
    ASSERT_EQ(table.errors.size(), 5U);
    EXPECT_THAT(table.errors.front(), HasSubstr("line 6:"));
    EXPECT_THAT(table.errors.back(), HasSubstr("line 10:"));
}

std::optional<std::vector<std::string>> script(const std::string& text) {
    std::istringstream stream(text);
    return readScript(stream);
}

TEST(ScriptFile, HoldsOneCommandALine) {
    EXPECT_THAT(script("VEMO-SCRIPT 1\r\nOPEN a.dxf\r\n\n  \nQUIT"),
                Optional(ElementsAre("OPEN a.dxf", "QUIT")));
    EXPECT_THAT(script("VEMO-SCRIPT 1"), Optional(ElementsAre()));
}

TEST(ScriptFile, AnythingElseIsABadFormat) {
    EXPECT_FALSE(script(""));
    EXPECT_FALSE(script("OPEN a.dxf\n"));
    EXPECT_FALSE(script("VEMO-SCRIPT 2\nQUIT\n"));
    EXPECT_FALSE(script("VEMO-SCRIPT 1 \nQUIT\n"));
    EXPECT_FALSE(script("VEMO-SCRIPT 1\n\x01QUIT\n"));
    EXPECT_FALSE(script("VEMO-SCRIPT 1\nOPEN \xFF.dxf\n"));
    EXPECT_FALSE(script("VEMO-SCRIPT 1\n" + std::string(5000, 'A') + "\n"));
}

}  // namespace
}  // namespace vemoapp
