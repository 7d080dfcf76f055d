#include "reportpage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

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

// The elements that are open where the page goes wrong, or at its end: none in a good page.
std::vector<std::string> leftOpen(const std::string& page) {
    static const std::regex tag(R"re(<(/?)([a-z][a-z0-9]*)((?: [a-z0-9-]+="[^"<]*")*)(/?)>)re");
    std::vector<std::string> open;
    for (std::size_t at = page.find('<', 1); at != std::string::npos; at = page.find('<', at + 1)) {
        std::smatch match;
        const auto from = page.begin() + static_cast<std::ptrdiff_t>(at);
        if (!std::regex_search(from, page.end(), match, tag,
                               std::regex_constants::match_continuous)) {
            open.push_back("no tag: " + page.substr(at, 60));
            return open;
        }
        if (match[1].length() == 0 && match[4].length() == 0) {
            open.push_back(match[2]);
        } else if (match[1].length() != 0) {
            if (open.empty() || open.back() != match[2].str()) {
                open.push_back("ended: " + match[2].str());
                return open;
            }
            open.pop_back();
        }
    }
    return open;
}

TEST(Report, TextOfARunNeverBecomesMarkup) {
    const std::string page = inspect::reportPage(hostileRun(), kHostile);
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("\x01")));
    EXPECT_THAT(page, Not(HasSubstr("\xFF")));
    EXPECT_THAT(page, Not(HasSubstr("\u202E")));
    EXPECT_THAT(leftOpen(page), testing::IsEmpty());
    const std::regex fetch(R"re( (src|href|action)="(?!#)|url\(|@import)re");
    EXPECT_FALSE(std::regex_search(page, fetch));
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

TEST(Report, IndentsJsonButNotItsTexts) {
    EXPECT_EQ("{\n  \"a{,\\\"\": [\n    1,\n    {}\n  ],\n  \"b\": []\n}",
              inspect::indentedJson(R"({"a{,\"":[1,{}],"b":[]})"));
}

}  // namespace
