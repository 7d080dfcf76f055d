#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "support/testfolder.h"
#include "utils/paths.h"

namespace {

using testing::ElementsAre;

class FileCopy : public testing::Test {
  protected:
    bool copy(const std::string& source, const std::string& target) const {
        return voutCopyFile(OdAnsiString(folder.path(source)), OdAnsiString(folder.path(target)));
    }
    /// Everything below the folder, in byte order.
    std::vector<std::string> below(const std::string& name) const {
        std::vector<std::string> paths;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path(name))) {
            paths.push_back(std::filesystem::relative(entry.path(), folder.path(name)));
        }
        std::sort(paths.begin(), paths.end());
        return paths;
    }
    unsigned modeOf(const std::string& name) const {
        struct stat status {};
        EXPECT_EQ(::stat(folder.path(name).c_str(), &status), 0) << name;
        return status.st_mode & 07777;
    }
    std::string content(const std::string& name) const { return contentOf(folder.path(name)); }

    TestFolder folder;
};

TEST_F(FileCopy, MakesFoldersWithTheirParents) {
    EXPECT_TRUE(voutCreateDir(OdAnsiString(folder.path("a/b/c/"))));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("a/b/c")));
    EXPECT_TRUE(voutCreateDir(OdAnsiString(folder.path("a/b"))));
    folder.file("file");
    EXPECT_FALSE(voutCreateDir(OdAnsiString(folder.path("file"))));
    EXPECT_FALSE(voutCreateDir(OdAnsiString(folder.path("file/below"))));
    EXPECT_FALSE(voutCreateDir(""));
}

TEST_F(FileCopy, CopiesAFileOverAnother) {
    folder.file("source", "new content");
    ::chmod(folder.path("source").c_str(), 0754);
    folder.file("target", "old and longer content");
    EXPECT_TRUE(copy("source", "target"));
    EXPECT_TRUE(copy("source", "made/for/it"));
    for (const char* name : {"target", "made/for/it"}) {
        EXPECT_EQ(content(name), "new content");
        EXPECT_EQ(modeOf(name), 0754u);
    }
    EXPECT_TRUE(copy("source", "source"));
    EXPECT_EQ(content("source"), "new content");
}

TEST_F(FileCopy, RefusesWhatDoesNotFit) {
    folder.file("file", "content");
    folder.file("folder/inside", "kept");
    EXPECT_FALSE(copy("file", "folder"));
    EXPECT_FALSE(copy("folder", "file"));
    EXPECT_FALSE(copy("missing", "target"));
    EXPECT_FALSE(voutCopyFile("", OdAnsiString(folder.path("target"))));
    EXPECT_FALSE(voutCopyFile(OdAnsiString(folder.path("file")), ""));
    EXPECT_EQ(content("file"), "content");
    EXPECT_THAT(below(""), ElementsAre("file", "folder", "folder/inside"));
}

TEST_F(FileCopy, CopiesATreeIntoWhatIsThere) {
    folder.file("source/a.txt", "a");
    folder.file("source/sub/b.txt", "b");
    folder.folder("source/sub/empty");
    folder.file("target/a.txt", "old");
    folder.file("target/own.txt", "own");
    EXPECT_TRUE(copy("source", "target"));
    EXPECT_TRUE(copy("source/", "new/place/"));
    EXPECT_THAT(below("target"), ElementsAre("a.txt", "own.txt", "sub", "sub/b.txt", "sub/empty"));
    EXPECT_THAT(below("new/place"), ElementsAre("a.txt", "sub", "sub/b.txt", "sub/empty"));
    EXPECT_EQ(content("target/a.txt") + content("target/sub/b.txt"), "ab");
    EXPECT_EQ(content("target/own.txt"), "own");
}

TEST_F(FileCopy, KeepsModesEvenOfWhatCannotBeWrittenTo) {
    folder.file("source/sealed/a.txt", "a");
    folder.folder("target");
    ::chmod(folder.path().c_str(), 0777);
    ::chmod(folder.path("target").c_str(), 0777);
    ::chmod(folder.path("source").c_str(), 0755);
    ::chmod(folder.path("source/sealed/a.txt").c_str(), 0444);
    ::chmod(folder.path("source/sealed").c_str(), 0555);
    // For the superuser modes mean nothing.
    const uid_t user = ::geteuid();
    ASSERT_TRUE(user != 0 || ::seteuid(65534) == 0);
    const bool copied = copy("source", "target");
    ASSERT_EQ(::seteuid(user), 0);
    EXPECT_TRUE(copied);
    EXPECT_EQ(content("target/sealed/a.txt"), "a");
    EXPECT_EQ(modeOf("target/sealed/a.txt"), 0444u);
    EXPECT_EQ(modeOf("target/sealed"), 0555u);
    EXPECT_EQ(modeOf("target"), 0777u);
    ::chmod(folder.path("source/sealed").c_str(), 0755);
    ::chmod(folder.path("target/sealed").c_str(), 0755);
}

TEST_F(FileCopy, CopiesWhatLinksLeadToAndEnds) {
    folder.file("elsewhere/linked.txt", "linked");
    folder.folder("source/sub");
    folder.link("source/file.txt", "../elsewhere/linked.txt");
    folder.link("source/folder", "../elsewhere");
    folder.link("source/sub/back", "..");
    EXPECT_TRUE(copy("source", "target"));
    EXPECT_THAT(below("target"), ElementsAre("file.txt", "folder", "folder/linked.txt", "sub"));
    EXPECT_FALSE(std::filesystem::is_symlink(folder.path("target/file.txt")));
    EXPECT_EQ(content("target/folder/linked.txt"), "linked");
}

TEST_F(FileCopy, EndsWhenTheTargetLiesInTheSource) {
    folder.file("source/a.txt", "a");
    folder.file("source/sub/b.txt", "b");
    EXPECT_TRUE(copy("source", "source/sub/copy"));
    EXPECT_THAT(below("source/sub"),
                ElementsAre("b.txt", "copy", "copy/a.txt", "copy/sub", "copy/sub/b.txt"));
    EXPECT_TRUE(copy("source", "source"));
    EXPECT_EQ(content("source/a.txt"), "a");
    folder.link("target", "source/sub");
    EXPECT_TRUE(copy("source", "target"));
    EXPECT_EQ(content("source/sub/a.txt"), "a");
}

TEST_F(FileCopy, CopiesTheOthersWhenOneFails) {
    folder.file("source/a.txt", "a");
    folder.file("source/m.txt", "m");
    folder.file("source/z/z.txt", "z");
    folder.link("source/dangling", "nowhere");
    folder.file("target/m.txt/in the way");
    folder.file("target/z", "a file where a folder would go");
    EXPECT_FALSE(copy("source", "target"));
    EXPECT_THAT(below("target"), ElementsAre("a.txt", "m.txt", "m.txt/in the way", "z"));
    EXPECT_EQ(content("target/a.txt"), "a");
}

TEST_F(FileCopy, LeavesNoHalfFile) {
    folder.file("source/big", std::string(300'000, 'x'));
    folder.file("source/small", "small");
    folder.file("target/big", "old");
    std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit before {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const struct rlimit narrow { 100'000, before.rlim_max };
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &narrow), 0);
    const bool copied = copy("source", "target");
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_FALSE(copied);
    EXPECT_THAT(below("target"), ElementsAre("big", "small"));
    EXPECT_EQ(content("target/big"), "old");
}

}  // namespace
