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
constexpr int kLines = 20;
const std::string kFull(10'000, 'x');

/// Appends the process's lines to the full file as soon as the gate is closed at its other end.
bool appendLines(const std::string& path, int process, int gate) {
    LogFile file(static_cast<off_t>(kFull.size()));
    file.setPath(path);
    char nothing = 0;
    bool whole = ::read(gate, &nothing, 1) == 0;
    for (int line = 0; line < kLines; ++line) {
        whole = file.append("line " + std::to_string(process * kLines + line) + "\n") && whole;
    }
    return whole;
}

void appendFromSeveralProcesses(const std::string& path) {
    int gate[2] = {};
    ASSERT_EQ(::pipe(gate), 0);
    std::vector<pid_t> children(kProcesses);
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(gate[1]);
            ::_exit(appendLines(path, process, gate[0]) ? 0 : 1);
        }
        children[static_cast<std::size_t>(process)] = child;
    }
    ::close(gate[0]);
    ::close(gate[1]);
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
}

// All find the file full at the same moment, and one alone may rename it: were it renamed twice,
// what it held would be gone. Whether they really meet is luck, hence the rounds.
TEST_F(LogFileTest, IsRenamedOnceWhenSeveralProcessesFindItFull) {
    for (int round = 0; round < 40; ++round) {
        std::filesystem::remove(path);
        folder.file("app.log", kFull + '\n');
        ASSERT_NO_FATAL_FAILURE(appendFromSeveralProcesses(path));
        std::set<std::string> seen;
        std::istringstream written(contentOf(older) + contentOf(path));
        for (std::string line; std::getline(written, line);) {
            seen.insert(line);
        }
        ASSERT_TRUE(seen.contains(kFull)) << round;
        ASSERT_EQ(seen.size(), 1u + kProcesses * kLines) << round;
    }
}

}  // namespace
