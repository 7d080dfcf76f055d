#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "support/testfolder.h"
#include "utils/paths.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

Texts globbed(const std::string& folder, const std::string& pattern, int depth = 1) {
    OdArray<OdAnsiString> result;
    voutGlobNoCaseSensitive2(OdAnsiString(folder), OdAnsiString(pattern), result, depth);
    Texts texts;
    for (const OdAnsiString& path : result) {
        texts.push_back(path.str());
    }
    return texts;
}

class Glob : public testing::Test {
  protected:
    Texts inFolder(const std::string& pattern, int depth = 1) const {
        Texts names = globbed(folder.path(), pattern, depth);
        for (std::string& name : names) {
            EXPECT_TRUE(name.starts_with(folder.path() + "/")) << name;
            name.erase(0, folder.path().size() + 1);
        }
        return names;
    }

    TestFolder folder;
};

TEST_F(Glob, KnowsTwoWildcardsAndNoCase) {
    for (const char* name : {"Simplex.SHX", "simple.shx", "txt.shp", ".hidden", "a[1].txt",
                             "äb.txt", "数据.txt", "back\\slash", "𐐀b.txt", "\xe9-.txt"}) {
        folder.file(name);
    }
    EXPECT_THAT(inFolder("*.shx"), ElementsAre("simple.shx", "Simplex.SHX"));
    EXPECT_THAT(inFolder("SIMPLE?.sh*"), ElementsAre("Simplex.SHX"));
    EXPECT_THAT(inFolder("TXT.*P"), ElementsAre("txt.shp"));
    EXPECT_THAT(inFolder("a[1].txt"), ElementsAre("a[1].txt"));
    EXPECT_THAT(inFolder("[a-z]*"), IsEmpty());
    EXPECT_THAT(inFolder("??.txt"), ElementsAre("äb.txt", "数据.txt", "𐐀b.txt", "\xe9-.txt"));
    EXPECT_THAT(inFolder("𐐨B.*"), ElementsAre("𐐀b.txt"));
    EXPECT_THAT(inFolder("\xe9*"), ElementsAre("\xe9-.txt"));
    EXPECT_THAT(inFolder("Ä*"), ElementsAre("äb.txt"));
    EXPECT_THAT(inFolder("BACK\\slash"), ElementsAre("back\\slash"));
    EXPECT_EQ(inFolder("*.*").size(), 9u);
    EXPECT_EQ(inFolder("*").size(), 10u);
    EXPECT_THAT(inFolder(""), IsEmpty());
    EXPECT_THAT(inFolder("*simple"), IsEmpty());
    EXPECT_THAT(inFolder("./txt.shp"), IsEmpty());
}

TEST_F(Glob, SortsByNameThenByExtension) {
    for (const char* name : {"Sans-Oblique.ttf", "sans.ttf", "Sans.ttf", "SANS.otf", "Sans.OTF",
                             "b", "A.x", "a.y", "Sans-Bold.ttf", "a.b.c"}) {
        folder.file(name);
    }
    EXPECT_THAT(inFolder("*"),
                ElementsAre("A.x", "a.y", "a.b.c", "b", "SANS.otf", "Sans.OTF", "Sans.ttf",
                            "sans.ttf", "Sans-Bold.ttf", "Sans-Oblique.ttf"));
}

// Against the plain definition of the order, on names that begin alike for longer or shorter.
TEST_F(Glob, SortsRandomNamesAsTheOrderIsDefined) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    const auto small = [](std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; });
        return text;
    };
    const auto rank = [&small](const std::string& name) {
        const std::filesystem::path path(name);
        const std::string stem = path.stem();
        const std::string extension = path.extension();
        return std::tuple(small(stem), stem, small(extension), extension);
    };
    std::set<std::string> made;
    while (made.size() < 500) {
        std::string name(random() % 20, 'n');
        for (std::size_t left = 1 + random() % 4; left > 0; --left) {
            name += "aAnN-"[random() % 5];
        }
        for (std::size_t left = random() % 3; left > 0; --left) {
            name += "\xC3\xA9";
        }
        constexpr std::array extensions = {"", ".t", ".T", ".ttf"};
        made.insert(
            folder.file(name + extensions.at(random() % 4)).substr(folder.path().size() + 1));
    }
    Texts expected(made.begin(), made.end());
    std::sort(expected.begin(), expected.end(),
              [&rank](const auto& a, const auto& b) { return rank(a) < rank(b); });
    EXPECT_EQ(inFolder("*"), expected);
}

TEST_F(Glob, PutsTheExactNameFirstWhenThereIsNoWildcard) {
    for (const char* name : {"ARIAL.TTF", "Arial.ttf", "arial.ttf"}) {
        folder.file(name);
    }
    EXPECT_THAT(inFolder("arial.ttf"), ElementsAre("arial.ttf", "ARIAL.TTF", "Arial.ttf"));
    EXPECT_THAT(inFolder("aRIAL.ttf"), ElementsAre("ARIAL.TTF", "Arial.ttf", "arial.ttf"));
    EXPECT_THAT(inFolder("arial.tt?"), ElementsAre("ARIAL.TTF", "Arial.ttf", "arial.ttf"));
}

TEST_F(Glob, SearchesAFolderBeforeItsSubfoldersDownToTheDepth) {
    for (const char* name : {"z.t", "Beta/y.t", "Beta/deep/x.t", "alpha/w.t", "alpha/v.t/u.t"}) {
        folder.file(name);
    }
    EXPECT_THAT(inFolder("*.t"), ElementsAre("z.t"));
    EXPECT_THAT(inFolder("*.t", 2), ElementsAre("z.t", "alpha/w.t", "Beta/y.t"));
    const auto all = ElementsAre("z.t", "alpha/w.t", "alpha/v.t/u.t", "Beta/y.t", "Beta/deep/x.t");
    EXPECT_THAT(inFolder("*.t", 3), all);
    EXPECT_THAT(inFolder("*.t", INT_MAX), all);
    EXPECT_THAT(inFolder("*.t", 0), IsEmpty());
    EXPECT_THAT(inFolder("*.t", INT_MIN), IsEmpty());
}

TEST_F(Glob, AppendsAndKeepsThePathAsAskedFor) {
    folder.file("sub/a.t");
    OdArray<OdAnsiString> result;
    result.append("before");
    const std::string asked = folder.path() + "//sub/../sub/";
    voutGlobNoCaseSensitive2(OdAnsiString(asked), "*", result, 1);
    voutGlobNoCaseSensitive2(OdAnsiString(folder.path("SUB")), "*", result, 1);
    ASSERT_EQ(result.size(), 2u);
    EXPECT_STREQ(result[0], "before");
    EXPECT_EQ(result[1].str(), asked + "a.t");

    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const char* relative : {"sub", "./sub", "sub/", ".//sub"}) {
        EXPECT_THAT(globbed(relative, "A.T"), ElementsAre(folder.path("sub/a.t"))) << relative;
    }
    EXPECT_THAT(globbed(".", "*.t", 2), ElementsAre(folder.path("sub/a.t")));
    EXPECT_THAT(globbed("", "*", 2), IsEmpty());
    std::filesystem::current_path(before);
}

TEST_F(Glob, FollowsLinksAndEndsWhereTheyLeadBack) {
    folder.file("fonts/a.t");
    folder.file("elsewhere/b.t");
    folder.link("fonts/c.t", "../elsewhere/b.t");
    folder.link("fonts/dangling.t", "nowhere");
    folder.link("fonts/linked", "../elsewhere");
    folder.link("fonts/self", ".");
    folder.link("elsewhere/back", "../fonts");
    ASSERT_EQ(::mkfifo(folder.path("fonts/pipe.t").c_str(), 0600), 0);
    EXPECT_THAT(globbed(folder.path("fonts"), "*.t", 50),
                ElementsAre(folder.path("fonts/a.t"), folder.path("fonts/c.t"),
                            folder.path("fonts/linked/b.t")));
}

TEST_F(Glob, PassesOverWhatCannotBeRead) {
    folder.file("a/1.t");
    folder.file("locked/2.t");
    folder.file("z/3.t");
    ::chmod(folder.path("locked").c_str(), 0);
    ::chmod(folder.path().c_str(), 0755);
    // The superuser can read everything.
    const uid_t user = ::geteuid();
    ASSERT_TRUE(user != 0 || ::seteuid(65534) == 0);
    const Texts names = inFolder("*.t", 2);
    ASSERT_EQ(::seteuid(user), 0);
    EXPECT_THAT(names, ElementsAre("a/1.t", "z/3.t"));
    EXPECT_THAT(globbed(folder.path("missing"), "*"), IsEmpty());
    EXPECT_THAT(globbed(folder.path("a/1.t"), "*"), IsEmpty());
    ::chmod(folder.path("locked").c_str(), 0755);
}

TEST_F(Glob, MatchesManyStarsInReasonableTime) {
    folder.file(std::string(250, 'a'));
    std::string pattern;
    for (int star = 0; star < 60; ++star) {
        pattern += "*a";
    }
    EXPECT_EQ(inFolder(pattern).size(), 1u);
    EXPECT_THAT(inFolder(pattern + "*b"), IsEmpty());
}

}  // namespace
