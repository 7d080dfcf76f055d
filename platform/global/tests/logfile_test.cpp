#include "logfile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <sstream>
#include <vector>

#include "support/testfolder.h"

namespace {

class LogFileTest : public testing::Test {
  protected:
    TestFolder folder;
    std::string path = folder.path("app.log");
    std::string older = path + ".1";
};

TEST_F(LogFileTest, BeginsAnewAtItsLimit) {
    LogFile file(10);
    file.setPath(path);
    EXPECT_TRUE(file.append("1234\n"));
    EXPECT_TRUE(file.append("5678\n"));
    EXPECT_FALSE(std::filesystem::exists(older));
    EXPECT_TRUE(file.append("9\n"));
    EXPECT_EQ(contentOf(path), "9\n");
    EXPECT_EQ(contentOf(older), "1234\n5678\n");

    EXPECT_TRUE(file.append("a line above the limit\n"));
    EXPECT_TRUE(file.append("b\n"));
    EXPECT_EQ(contentOf(older), "a line above the limit\n");
    EXPECT_EQ(contentOf(path), "b\n");
}

TEST_F(LogFileTest, GrowsOnWhenItCannotBeRenamed) {
    folder.file("app.log.1/in the way");
    LogFile file(4);
    file.setPath(path);
    for (const char* line : {"123\n", "456\n", "789\n"}) {
        EXPECT_TRUE(file.append(line));
    }
    EXPECT_EQ(contentOf(path), "123\n456\n789\n");
}

TEST_F(LogFileTest, NoticesThatItsFileWasMovedOrRemoved) {
    LogFile file;
    file.setPath(path);
    EXPECT_TRUE(file.append("first\n"));
    std::filesystem::rename(path, folder.path("kept.log"));
    EXPECT_TRUE(file.append("second\n"));
    EXPECT_EQ(contentOf(path), "second\n");
    std::filesystem::remove(path);
    EXPECT_TRUE(file.append("third\n"));
    EXPECT_EQ(contentOf(path), "third\n");
    EXPECT_EQ(contentOf(folder.path("kept.log")), "first\n");
}

TEST_F(LogFileTest, RefusesWhatCannotBeWritten) {
    LogFile file;
    EXPECT_FALSE(file.append("no path\n"));
    file.setPath(folder.path());
    EXPECT_FALSE(file.append("a folder\n"));
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    file.setPath(folder.path("pipe"));
    EXPECT_FALSE(file.append("a pipe without a reader\n"));
}

constexpr int kProcesses = 4;
constexpr int kLines = 300;
constexpr int kLength = 12;

/// Appends the process's lines; the lines of all together fill the limit one and a half times.
bool appendLines(const std::string& path, int process) {
    LogFile file(kProcesses * kLines * kLength * 2 / 3);
    file.setPath(path);
    bool whole = true;
    for (int line = 0; line < kLines; ++line) {
        const int number = 100000 + process * kLines + line;
        whole = file.append("line " + std::to_string(number) + "\n") && whole;
    }
    return whole;
}

// The file is renamed once; were it renamed twice, the lines of the first would be gone. Whether
// two processes find it full at the same moment is luck, hence the rounds.
TEST_F(LogFileTest, LosesNothingWhenSeveralProcessesFillIt) {
    for (int round = 0; round < 30; ++round) {
        std::filesystem::remove(path);
        std::filesystem::remove(older);
        std::vector<pid_t> children(kProcesses);
        for (int process = 0; process < kProcesses; ++process) {
            const pid_t child = ::fork();
            if (child == 0) {
                ::_exit(appendLines(path, process) ? 0 : 1);
            }
            children[static_cast<std::size_t>(process)] = child;
        }
        for (const pid_t child : children) {
            int status = 0;
            ASSERT_EQ(::waitpid(child, &status, 0), child);
            EXPECT_EQ(status, 0);
        }
        std::set<std::string> seen;
        std::istringstream written(contentOf(older) + contentOf(path));
        for (std::string line; std::getline(written, line); seen.insert(line)) {
            ASSERT_EQ(line.size(), kLength - 1u);
        }
        ASSERT_EQ(seen.size(), kProcesses * kLines);
        ASSERT_NE(contentOf(older), "");
    }
}

}  // namespace
