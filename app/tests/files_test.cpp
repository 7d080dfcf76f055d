// The small readers: lines, words, alias files and scripts.
#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

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

// Against the definition, byte by byte.
TEST(LineReader, ReadsRandomTextsAsTheyAreDefined) {
    constexpr unsigned seed = 3;
    std::mt19937 random(seed);
    for (int round = 0; round < 2000; ++round) {
        const std::size_t limit = round % 4 == 0 ? 600 : random() % 5;
        std::string text;
        for (std::size_t left = random() % (4 * limit + 4); left > 0; --left) {
            const auto byte = random() % (2 * limit + 4);
            text += byte == 0 ? '\n' : byte == 1 ? '\r' : byte == 2 ? '\0' : 'a';
        }
        std::istringstream stream(text);
        LineReader lines(stream, limit);
        std::uint64_t number = 0;
        for (std::string_view rest(text); !rest.empty(); ++number) {
            std::string_view expected = rest.substr(0, rest.find('\n'));
            rest.remove_prefix(std::min(rest.size(), expected.size() + 1));
            const bool isTooLong = expected.size() > limit;
            if (isTooLong) {
                expected = expected.substr(0, limit);
            } else if (expected.ends_with('\r')) {
                expected.remove_suffix(1);
            }
            std::string line = "former";
            ASSERT_EQ(lines.next(line), isTooLong ? LineReader::kTooLong : LineReader::kLine);
            ASSERT_EQ(line, expected);
            ASSERT_EQ(lines.lineNumber(), number + 1);
        }
        std::string line;
        ASSERT_EQ(lines.next(line), LineReader::kEnd);
    }
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
