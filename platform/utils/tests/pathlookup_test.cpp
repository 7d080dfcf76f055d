#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/testfolder.h"
#include "utils/paths.h"

namespace {

class PathLookup : public testing::Test {
  protected:
    PathLookup() { std::filesystem::current_path(folder.path()); }
    ~PathLookup() override { std::filesystem::current_path(before); }

    /// What a look-up of the path gives back; "no" when it finds nothing.
    static std::string found(const std::string& path) {
        OdAnsiString answer("untouched");
        const bool exists = voutIsExistFileNoCaseSensitive(OdAnsiString(path), answer);
        EXPECT_TRUE(exists || answer == "untouched");
        return exists ? answer.str() : "no";
    }

    std::filesystem::path before = std::filesystem::current_path();
    TestFolder folder;
};

TEST_F(PathLookup, TellsFilesFromFolders) {
    folder.file("a.txt");
    folder.folder("sub");
    folder.link("dangling", "nowhere");
    EXPECT_TRUE(voutIsExistFile(OdAnsiString(folder.path("a.txt"))));
    EXPECT_TRUE(voutIsExistFile("a.txt"));
    for (const char* name : {"sub", "A.TXT", "dangling", "a.txt/", ""}) {
        EXPECT_FALSE(voutIsExistFile(name)) << name;
    }
}

TEST_F(PathLookup, IgnoresCaseAtEachComponent) {
    const std::string path = folder.file("Fonts/Simplex.SHX");
    EXPECT_EQ(found(folder.path("fonts/SIMPLEX.shx")), path);
    EXPECT_EQ(found(folder.path("FONTS")), folder.path("Fonts"));
    EXPECT_EQ(found(path), path);
    EXPECT_EQ(found(folder.path("fonts/simplex")), "no");
    EXPECT_EQ(found(folder.path("fonts/simplex.shx.bak")), "no");
    EXPECT_EQ(found("/"), "/");
    EXPECT_EQ(found(""), "no");
}

TEST_F(PathLookup, PrefersTheExactNameAndTriesEveryFolderThatFits) {
    folder.file("Data/one.txt");
    folder.file("DATA/two.txt");
    folder.file("data/TWO.txt");
    EXPECT_EQ(found("DATA/two.txt"), folder.path("DATA/two.txt"));
    EXPECT_EQ(found("data/two.txt"), folder.path("data/TWO.txt"));
    EXPECT_EQ(found("DATA/ONE.txt"), folder.path("Data/one.txt"));
    EXPECT_EQ(found("dAtA/two.txt"), folder.path("DATA/two.txt"));
    EXPECT_EQ(found("data/three.txt"), "no");
}

TEST_F(PathLookup, AnswersRelativeNamesAbsolutely) {
    const std::string path = folder.file("Sub/file.txt");
    for (const char* name : {"sub/FILE.txt", "./sub/./file.txt", "sub//file.txt",
                             "SUB/../Sub/file.txt", "sub/nested/../file.txt"}) {
        folder.folder("Sub/nested");
        EXPECT_EQ(found(name), path) << name;
    }
    EXPECT_EQ(found("../" + folder.path().substr(5) + "/sub/file.txt"), path);
    EXPECT_EQ(found("sub/missing/../file.txt"), "no");
    EXPECT_EQ(found("sub/file.txt/../file.txt"), "no");
}

TEST_F(PathLookup, TakesAClosingSeparatorAsAFolder) {
    folder.file("Sub/file.txt");
    EXPECT_EQ(found("sub/"), folder.path("Sub"));
    EXPECT_EQ(found("sub\\"), folder.path("Sub"));
    EXPECT_EQ(found("."), folder.path());
    EXPECT_EQ(found("sub/file.txt/"), "no");
}

TEST_F(PathLookup, SplitsAtBackslashesUnlessTheyAreInTheName) {
    const std::string split = folder.file("Sub/a.txt");
    EXPECT_EQ(found("SUB\\A.txt"), split);
    EXPECT_EQ(found(folder.path() + "\\sub/a.txt"), split);
    std::string rooted = folder.path("sub/a.txt");
    std::replace(rooted.begin(), rooted.end(), '/', '\\');
    EXPECT_EQ(found(rooted), split);
    const std::string named = folder.file("Sub\\a.txt");
    EXPECT_EQ(found("Sub\\a.txt"), named);
    EXPECT_EQ(found("sub\\a.txt"), split);
}

TEST_F(PathLookup, KeepsSymbolicLinksInTheAnswer) {
    folder.file("real/deep/file.txt");
    folder.file("real/beside.txt", "in real");
    folder.file("beside.txt", "at the top");
    folder.link("Link", "real/deep");
    folder.link("Dangling", "nowhere");
    EXPECT_EQ(found("link/FILE.txt"), folder.path("Link/file.txt"));
    EXPECT_EQ(found("link/../BESIDE.txt"), folder.path("Link/../beside.txt"));
    EXPECT_EQ(contentOf(found("link/../beside.txt")), "in real");
    EXPECT_EQ(contentOf(found("link/../DEEP/../../beside.txt")), "at the top");
    EXPECT_EQ(found("dangling"), "no");
    EXPECT_EQ(found("Dangling"), "no");
}

TEST_F(PathLookup, KnowsLettersBeyondAsciiInAnyLocale) {
    const std::string german = folder.file("Größe-ÄÖÜ.txt");
    const std::string russian = folder.file("чертёж/План.dxf");
    ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
    EXPECT_EQ(found("GRÖßE-äöü.TXT"), german);
    EXPECT_EQ(found("ЧЕРТЁЖ/пЛАН.DXF"), russian);
    EXPECT_EQ(found("Grosse-äöü.txt"), "no");

    OdString wide;
    EXPECT_TRUE(voutIsExistFileNoCaseSensitiveW(L"ЧЕРТЁЖ/план.dxf", wide));
    EXPECT_EQ(OdStringToUtf8String(wide).str(), russian);
    EXPECT_FALSE(voutIsExistFileNoCaseSensitiveW(L"нет", wide));
    EXPECT_EQ(OdStringToUtf8String(wide).str(), russian);
}

// Bytes that are no UTF-8: latin-1, a cut sequence, an overlong "/", a surrogate.
TEST_F(PathLookup, FindsNamesThatAreNoUtf8ByTheirBytes) {
    for (const std::string bytes : {"Caf\xe9", "Cut\xe2\x82", "Long\xc0\xaf", "Half\xed\xa0\x80"}) {
        const std::string path = folder.file("NAME" + bytes);
        EXPECT_EQ(found("name" + bytes), path);
        EXPECT_EQ(found("name" + bytes.substr(0, bytes.size() - 1) + '\xe8'), "no");
    }
}

// Each "Foo/.." doubles the ways to the end, none of which gets there.
TEST_F(PathLookup, EndsSoonOnHostileNames) {
    folder.folder("Foo");
    folder.folder("foo");
    std::string path;
    for (int turn = 0; turn < 500; ++turn) {
        path += "FOO/../";
    }
    EXPECT_EQ(found(path + "missing"), "no");
    EXPECT_EQ(found(path + "foo"), folder.path("foo"));
    std::string dots(2'000'000, '.');
    for (std::size_t index = 1; index < dots.size(); index += 2) {
        dots[index] = '/';
    }
    EXPECT_EQ(found(dots), "no");
    EXPECT_EQ(found(std::string(300, 'x')), "no");
    EXPECT_EQ(found(folder.path("foo") + std::string("\0.shx", 5)), "no");
}

// What the look-up is to answer for names of ASCII letters without dots: at each folder the name as
// it stands, then those that differ in case in their order; the first way that leads to the end.
std::string plainlyFound(const std::string& folder, const std::vector<std::string>& names,
                         std::size_t next) {
    if (next == names.size()) {
        return folder;
    }
    const auto lower = [](std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char letter) { return static_cast<char>(letter | 0x20); });
        return text;
    };
    std::vector<std::string> fitting;
    std::error_code noFolder;
    for (const auto& entry : std::filesystem::directory_iterator(folder, noFolder)) {
        const std::string name = entry.path().filename();
        if (lower(name) == lower(names[next]) && std::filesystem::exists(entry.path())) {
            fitting.push_back(name);
        }
    }
    std::sort(fitting.begin(), fitting.end());
    std::stable_partition(fitting.begin(), fitting.end(),
                          [&](const std::string& name) { return name == names[next]; });
    for (const std::string& name : fitting) {
        std::string found = plainlyFound(folder + '/' + name, names, next + 1);
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

TEST_F(PathLookup, AnswersAsAPlainSearchDoes) {
    std::minstd_rand random(11);
    const std::vector<std::string> names = {"ab", "aB", "Ab", "AB", "c", "C"};
    const auto anyName = [&] { return names[random() % names.size()]; };
    for (int made = 0; made < 30; ++made) {
        std::error_code taken;
        const std::filesystem::path base = folder.path(anyName() + '/' + anyName());
        std::filesystem::create_directories(base, taken);
        folder.file(base.lexically_relative(folder.path()) / anyName());
        std::filesystem::create_symlink(made % 2 ? "nowhere" : "../C", base / anyName(), taken);
    }
    int hits = 0;
    for (int step = 0; step < 2000; ++step) {
        std::vector<std::string> wanted(1 + random() % 4);
        std::generate(wanted.begin(), wanted.end(), anyName);
        std::string path;
        for (const std::string& name : wanted) {
            path += (path.empty() ? "" : random() % 8 ? "/" : "//") + name;
        }
        const std::string expected = plainlyFound(folder.path(), wanted, 0);
        hits += expected.empty() ? 0 : 1;
        EXPECT_EQ(found(path), expected.empty() ? "no" : expected) << path;
        EXPECT_EQ(found(folder.path(path)), expected.empty() ? "no" : expected) << path;
        const bool isFolder = std::filesystem::is_directory(expected);
        if (isFolder || expected.empty()) {
            EXPECT_EQ(found(path + '/'), isFolder ? expected : "no") << path;
        }
    }
    EXPECT_GT(hits, 400);
    EXPECT_LT(hits, 1950);
}

}  // namespace
