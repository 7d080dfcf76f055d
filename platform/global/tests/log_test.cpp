#include "global/log.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

#include "support/testfolder.h"

namespace {

using testing::MatchesRegex;

constexpr const char* kTime = "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\\.[0-9]{3}[+-][0-9]{4}";

template <class Write>
std::string onStandardError(Write write) {
    testing::internal::CaptureStderr();
    write();
    return testing::internal::GetCapturedStderr();
}

void logText(const char* text) {
    vo_Log(4, 7, "unit", "function", text);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// A log that goes to the folder's "app.log".
class FileLog : public testing::Test {
  protected:
    FileLog() { vo_set_Log_file(OdAnsiString(path)); }
    ~FileLog() override { vo_set_print_log_to_file(false); }

    TestFolder folder;
    std::string path = folder.path("app.log");
};

TEST(LogLine, HoldsTimeLevelUnitFunctionAndText) {
    const std::string line = onStandardError(
        [] { vo_Log(5, 12, "../../../source/core/root/vemo_root", "operator()", "失败 100%n"); });
    EXPECT_THAT(line,
                MatchesRegex(std::string(kTime) + " 5 vemo_root:12 operator\\(\\) 失败 100%n\n"));
}

TEST(LogLine, StaysOneLineAndLeavesTheTerminalAlone) {
    const std::string line = onStandardError([] { logText("first\nsecond\r\tthird\x1b[2J\x7f"); });
    EXPECT_THAT(line, testing::EndsWith("first\\nsecond\\r\tthird\\x1b[2J\\x7f\n"));
    EXPECT_EQ(linesOf(line).size(), 1u);
}

TEST(LogLine, SurvivesWhatIsMissing) {
    EXPECT_THAT(onStandardError([] { vo_Log(4, 0, nullptr, nullptr, nullptr); }),
                testing::EndsWith(" 4 -:0 - \n"));
}

TEST(LogLevel, StartsAtFourAndStaysInItsRange) {
    EXPECT_EQ(vemo_log_level(), 4);
    const std::vector<std::pair<int, int>> settings = {{5, 5}, {0, 1}, {-9, 1}, {2, 2}, {99, 5}};
    for (const auto& [set, expected] : settings) {
        vo_set_print_log_level(set);
        EXPECT_EQ(vemo_log_level(), expected) << set;
    }
}

TEST_F(FileLog, IsWrittenOnlyWhileItIsOn) {
    const std::string shown = onStandardError([] {
        logText("before");
        vo_set_print_log_to_file(true);
        logText("during");
        vo_set_print_log_to_file(false);
        logText("between");
        vo_set_print_log_to_file(true);
        logText("again");
    });
    EXPECT_EQ(linesOf(shown).size(), 4u);
    const std::vector<std::string> written = linesOf(contentOf(path));
    ASSERT_EQ(written.size(), 2u);
    EXPECT_THAT(written[0], testing::EndsWith(" during"));
    EXPECT_THAT(written[1], testing::EndsWith(" again"));
}

TEST_F(FileLog, IsOpenedAtTheFirstLineAndAppendedTo) {
    vo_set_print_log_to_file(true);
    EXPECT_FALSE(std::filesystem::exists(path));
    folder.file("app.log", "older\n");
    onStandardError([] { logText("newer"); });
    EXPECT_THAT(contentOf(path), MatchesRegex("older\n.* newer\n"));
}

TEST_F(FileLog, FailingToOpenLeavesStandardError) {
    vo_set_Log_file(OdAnsiString(folder.path("missing/app.log")));
    vo_set_print_log_to_file(true);
    EXPECT_THAT(onStandardError([] { logText("lost nowhere"); }),
                testing::EndsWith("lost nowhere\n"));
    folder.folder("missing");
    onStandardError([] { logText("found"); });
    EXPECT_THAT(contentOf(folder.path("missing/app.log")), testing::EndsWith("found\n"));
}

TEST_F(FileLog, KeepsItsFileWhenTheWorkingFolderChanges) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    vo_set_Log_file("relative.log");
    vo_set_print_log_to_file(true);
    std::filesystem::current_path("/");
    onStandardError([] { logText("here"); });
    std::filesystem::current_path(before);
    EXPECT_THAT(contentOf(folder.path("relative.log")), testing::EndsWith("here\n"));
}

TEST_F(FileLog, IsNobodyElsesBusiness) {
    const mode_t before = ::umask(022);
    vo_set_print_log_to_file(true);
    onStandardError([] { logText("private"); });
    ::umask(before);
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);

    bool seen = false;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry, gone) == path) {
            seen = true;
            const int descriptor = std::stoi(entry.path().filename());
            EXPECT_TRUE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC);
        }
    }
    EXPECT_TRUE(seen);
}

TEST_F(FileLog, TakesWholeLinesFromManyThreads) {
    constexpr int kThreads = 8;
    constexpr int kLines = 200;
    const auto textOf = [](int thread, int line) {
        return std::string(300, 'x') + std::to_string(thread * kLines + line);
    };
    vo_set_print_log_to_file(true);
    onStandardError([&] {
        std::vector<std::jthread> threads;
        threads.reserve(kThreads);
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&textOf, thread] {
                for (int line = 0; line < kLines; ++line) {
                    vo_set_print_log_level(vemo_log_level());
                    logText(textOf(thread, line).c_str());
                }
            });
        }
    });
    std::multiset<std::string> expected;
    for (int number = 0; number < kThreads * kLines; ++number) {
        expected.insert(" 4 unit:7 function " + textOf(0, number));
    }
    std::multiset<std::string> seen;
    for (const std::string& line : linesOf(contentOf(path))) {
        seen.insert(line.substr(std::min(line.find(' '), line.size())));
    }
    EXPECT_TRUE(seen == expected);
}

}  // namespace
