// Reading of SHX headers.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/outcomes.h"
#include "support/sfntbuilder.h"
#include "support/streams.h"
#include "voapfontsread.h"

namespace {

using fontfile::shx;

unsigned int kindOf(const std::string& bytes) {
    const OdStreamBufPtr stream = streamOf(bytes);
    stream->seek(0, kSeekFromEnd);  // it rewinds
    return vosi::readShxKind(*stream);
}

// The text at the end of this many bytes.
std::string padded(const std::string& text, std::size_t length) {
    return std::string(length - text.size(), '-') + text;
}

TEST(ShxHeader, SaysTheKind) {
    EXPECT_EQ(kindOf(shx("Drafting86 bigfont 1.0")), 1u);
    EXPECT_EQ(kindOf(shx("Drafting86 unifont 1.0")), 2u);
    EXPECT_EQ(kindOf(shx("Drafting86 shapes 1.1")), 264u);
    EXPECT_EQ(kindOf(shx("Drafting86 shapes 1.0")), 4u);
    EXPECT_EQ(kindOf(shx("Drafting86 unifont 1.1")), 8u);
    EXPECT_EQ(kindOf(shx("Drafting86 BIGFONT 1.2")), 0u);
    // The order of the kinds decides, not the order in the text.
    EXPECT_EQ(kindOf(shx("shapes 1.1 unifont 1.0 bigfont")), 1u);
    EXPECT_EQ(kindOf(shx("shapes 1.1 unifont 1.0")), 2u);
    EXPECT_EQ(kindOf(shx("1.0 shapes 1.1")), 264u);
    EXPECT_EQ(kindOf(shx("1.1 1.0")), 4u);
}

TEST(ShxHeader, EndsAtItsMarkOrAfterFortyBytes) {
    const std::string more(64, '-');
    // A mark before the 23rd byte ends nothing.
    EXPECT_EQ(kindOf(padded("\x1a", 18) + "1.1" + more), 8u);
    EXPECT_EQ(kindOf(padded("\x1a", 23) + "1.1" + more), 0u);
    EXPECT_EQ(kindOf(padded("\x1a", 24) + "1.1" + more), 0u);
    EXPECT_EQ(kindOf(padded("1.1", 40) + more), 8u);
    EXPECT_EQ(kindOf(padded("1.1", 41) + more), 0u);
    EXPECT_EQ(kindOf(std::string("Drafting86 \0 1.1", 16) + more), 0u);

    for (const auto& [header, length] :
         {std::pair(padded("\x1a", 22), 41u), std::pair(padded("\x1a", 23), 23u),
          std::pair(padded("\x1a", 24), 24u), std::pair(more, 41u)}) {
        const OdStreamBufPtr stream = streamOf(header + more);
        vosi::readShxKind(*stream);
        EXPECT_EQ(stream->tell(), length);
    }
}

TEST(ShxHeader, RaisesWhenTheFileEndsWithinIt) {
    for (const std::string& header : {padded("1.1\x1a", 23), padded("1.1\x1a", 30),
                                      padded("1.1\x1a", 41), "1.1" + std::string(38, '-')}) {
        EXPECT_EQ(kindOf(header), 8u);
        for (std::size_t length = 0; length < header.size(); ++length) {
            EXPECT_EQ(raisedBy([&] { kindOf(header.substr(0, length)); }), eEndOfFile) << length;
        }
    }
}

}  // namespace
