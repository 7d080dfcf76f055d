#include "reportpage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "indentedjson.h"
#include "reporthtml.h"
#include "reportsections.h"

using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* kHostile = "</pre><script src='http://x.test/'>&\"\x01\xFF\u202E";

inspect::RunRecord hostileRun() {
    inspect::RunRecord run;
    run.result = 0;
    run.error = run.systemPath = run.userPath = kHostile;
    run.commandLine = {"vemocad", kHostile};
    run.core = std::string("{\"") + kHostile + "\":[]}";
    run.user = {{kHostile, kHostile}};
    run.paths = {{kHostile, {{kHostile, false}, {"/there", true}}}};
    run.fonts = {{{kHostile, kHostile, 5}}, {kHostile}, {kHostile}};
    run.services = {{kHostile, kHostile, kHostile}};
    run.modules = {{.asked = "libfine.so",
                    .loaded = true,
                    .file = "/m/libfine.so",
                    .reason = "",
                    .began = 1,
                    .milliseconds = 2,
                    .left = {kHostile}},
                   {.asked = kHostile,
                    .loaded = false,
                    .file = "",
                    .reason = kHostile,
                    .began = 4,
                    .milliseconds = 1,
                    .left = {}}};
    run.log = {{5, kHostile, 1, kHostile, kHostile}};
    run.steps = {
        {.name = kHostile,
         .began = 0,
         .milliseconds = 8,
         .raised = true,
         .did = {kHostile},
         .steps = {}},
        {.name = "end", .began = 9, .milliseconds = 0, .raised = false, .did = {}, .steps = {}}};
    run.startedAfter = 8.5;
    run.fontSearches = {{kHostile, "SHX file", false, ""}};
    return run;
}

/// A tag at the start of the text: its name, "" when there is none.
struct Tag {
    std::string name;
    bool ends = false;
    bool isEmpty = false;
};

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
}

// What names a tag or an attribute; taken from the text.
std::string takeName(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isNameCharacter);
    std::string name(text.begin(), end);
    text.remove_prefix(name.size());
    return name;
}

bool take(std::string_view& text, std::string_view wanted) {
    const bool there = text.starts_with(wanted);
    text.remove_prefix(there ? wanted.size() : 0);
    return there;
}

// ` name="value"`, with neither a quotation mark nor a "<" in the value.
bool takeAttribute(std::string_view& text) {
    if (!take(text, " ") || takeName(text).empty() || !take(text, "=\"")) {
        return false;
    }
    const std::size_t end = text.find_first_of("\"<");
    text.remove_prefix(std::min(end, text.size()));
    return take(text, "\"");
}

Tag tagAt(std::string_view text) {
    Tag tag;
    take(text, "<");
    tag.ends = take(text, "/");
    tag.name = takeName(text);
    while (text.starts_with(' ')) {
        if (!takeAttribute(text)) {
            return {};
        }
    }
    tag.isEmpty = take(text, "/");
    return take(text, ">") ? tag : Tag{};
}

// The elements that are open where the page goes wrong, or at its end: none in a good page.
std::vector<std::string> leftOpen(const std::string& page) {
    std::vector<std::string> open;
    for (std::size_t at = page.find('<', 1); at != std::string::npos; at = page.find('<', at + 1)) {
        const Tag tag = tagAt(std::string_view(page).substr(at));
        if (tag.name.empty()) {
            open.push_back("no tag: " + page.substr(at, 60));
            return open;
        }
        if (tag.ends) {
            if (open.empty() || open.back() != tag.name) {
                open.push_back("ended: " + tag.name);
                return open;
            }
            open.pop_back();
        } else if (!tag.isEmpty) {
            open.push_back(tag.name);
        }
    }
    return open;
}

// Whether the page would have a browser fetch something; a link within it begins with "#".
bool fetches(const std::string& page) {
    for (const char* attribute : {" src=\"", " href=\"", " action=\""}) {
        const std::string text = attribute;
        for (std::size_t at = page.find(text); at != page.npos; at = page.find(text, at + 1)) {
            if (page.at(at + text.size()) != '#') {
                return true;
            }
        }
    }
    return page.find("url(") != page.npos || page.find("@import") != page.npos;
}

// Rows of a table, without its head.
std::size_t rowsIn(const std::string& markup) {
    std::size_t rows = 0;
    for (std::size_t at = markup.find("<tbody"); at != markup.npos;
         at = markup.find("<tr", at + 1)) {
        ++rows;
    }
    return rows - 1;
}

TEST(Report, TextOfARunNeverBecomesMarkup) {
    const std::string page = inspect::reportPage(hostileRun(), kHostile);
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("\x01")));
    EXPECT_THAT(page, Not(HasSubstr("\xFF")));
    EXPECT_THAT(page, Not(HasSubstr("\u202E")));
    EXPECT_THAT(leftOpen(page), testing::IsEmpty());
    EXPECT_FALSE(fetches(page));
}

TEST(Report, EscapesWhatXmlCannotHold) {
    EXPECT_EQ("a&lt;b&gt;&amp;&quot;&#39;\n\u4E2D", inspect::escaped("a<b>&\"'\n\u4E2D").str());
    // A cut character, an overlong one, a surrogate, and one beyond the last.
    EXPECT_EQ("\uFFFD\uFFFD", inspect::escaped("\xE4\xB8").str());
    EXPECT_EQ("\uFFFD\uFFFDa", inspect::escaped("\xC0\x80"
                                                "a")
                                   .str());
    EXPECT_EQ("\uFFFD\uFFFD\uFFFD", inspect::escaped("\xED\xA0\x80").str());
    EXPECT_EQ("\uFFFD\uFFFD\uFFFD\uFFFD", inspect::escaped("\xF4\x90\x80\x80").str());
    EXPECT_EQ("\uFFFD", inspect::escaped("\xEF\xBF\xBF").str());
}

TEST(Report, SaysFirstHowTheRunEnded) {
    inspect::RunRecord run = hostileRun();
    EXPECT_THAT(inspect::reportPage(run, ""), HasSubstr("an exception ended its shut-down"));
    run.error.clear();
    const std::string page = inspect::reportPage(run, "");
    EXPECT_THAT(page, HasSubstr("The application started, without 1 of its modules."));
    EXPECT_THAT(page, HasSubstr("1 loaded, 1 failed"));
    EXPECT_THAT(page, HasSubstr("1 of the 2 in the path lists"));
    run.result = 401;
    EXPECT_THAT(inspect::reportPage(run, ""), HasSubstr("no module registered a main window"));
    run.result = 7;
    EXPECT_THAT(inspect::reportPage(run, ""), HasSubstr("the main window gave the result 7"));
    run.result.reset();
    EXPECT_THAT(inspect::reportPage(run, ""), HasSubstr("an exception ended its start-up"));
}

TEST(Report, OfARunThatRecordedNothingIsStillAPage) {
    const std::string page = inspect::reportPage({}, "now");
    EXPECT_THAT(leftOpen(page), testing::IsEmpty());
    EXPECT_THAT(page, HasSubstr("The run ended before its path lists were made."));
}

TEST(Report, TellsFailedModulesFirst) {
    const std::string section = inspect::modulesSection(hostileRun()).str();
    EXPECT_LT(section.find("Not loaded"), section.find("libfine.so"));
}

TEST(Report, SeparatesTheStartFromTheEnd) {
    const std::string page = inspect::reportPage(hostileRun(), "");
    const std::size_t end = page.find("<section id=\"end\"");
    EXPECT_LT(page.find("module libfine.so"), end);
    EXPECT_EQ(std::string::npos, page.find("module libfine.so", end));
    EXPECT_NE(std::string::npos, page.find(">end, under", end));
}

TEST(Report, CountsFontsThatNothingServes) {
    inspect::RunRecord run;
    run.fontSearches = {{"a.shx", "SHX file", false, ""},
                        {"a.shx", "substitute for an SHX font", true, "txt.shx"},
                        {"Face", "TrueType face", false, ""},
                        {"Face", "TrueType file", false, "/f.ttf"},
                        {"Lost", "TrueType face", false, ""},
                        {"Lost", "TrueType face, bold", false, ""}};
    EXPECT_THAT(inspect::fontSearchesSection(run).str(),
                HasSubstr("txt.shx was named in its place"));
    EXPECT_EQ(1U, inspect::fontsNotFound(run));
}

TEST(Report, AFaceAndItsFileAreOneRow) {
    inspect::RunRecord run;
    run.fontSearches = {{"Face", "TrueType face", false, "", 2, 0, {"face.ttf"}},
                        {"face.ttf", "TrueType file", false, "/f/face.ttf", 2, 2},
                        {"Lost", "TrueType face", false, "", 1, 0, {"c:/lost.ttf", "lost.ttf"}},
                        {"c:/lost.ttf", "TrueType file", false, "", 1, 1},
                        {"lost.ttf", "TrueType file", false, "", 1, 1}};
    const std::string alone = inspect::fontSearchesSection(run).str();
    EXPECT_THAT(alone, HasSubstr("/f/face.ttf, found by the file&#39;s name face.ttf"));
    EXPECT_THAT(alone, HasSubstr(", nor the file c:/lost.ttf, nor the file lost.ttf"));
    EXPECT_EQ(2U, rowsIn(alone));
    EXPECT_EQ(1U, inspect::fontsNotFound(run));

    // Another text style names the same file, and there is something for the lost one.
    run.fontSearches[1].times = 3;
    run.fontSearches.push_back({"lost.ttf", "substitute for a TrueType font", true, "other.ttf"});
    const std::string together = inspect::fontSearchesSection(run).str();
    EXPECT_EQ(4U, rowsIn(together));
    EXPECT_THAT(together, HasSubstr("; other.ttf was named in its place"));
    EXPECT_EQ(0U, inspect::fontsNotFound(run));
}

TEST(Report, IndentsJsonButNotItsTexts) {
    EXPECT_EQ("{\n  \"a{,\\\"\": [\n    1,\n    {}\n  ],\n  \"b\": []\n}",
              inspect::indentedJson(R"({"a{,\"":[1,{}],"b":[]})"));
}

}  // namespace
