// The user's file while a save is cut off by the process's death, and while two applications save.
// Every content that is ever seen is one that somebody saved, whole.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <random>
#include <set>
#include <thread>

#include <utils/vojson.h>

#include "boot_support.h"

namespace {

constexpr int kEntries = 300;

// The tree of a round says its writer and its number in every entry.
void fillRound(const std::string& writer, int round) {
    const VoJsonPtr list = vo_user_config("rounds", kElementArray);
    while (list.ArrayCount() > 0) {
        list->removeItem(list.ArrayCount() - 1);
    }
    for (int entry = 0; entry < kEntries; ++entry) {
        list->append(ElementValue::createObject(kElementText)
                         ->set_values(writer + ' ' + std::to_string(round)));
    }
}

// The one text of all entries; empty where there is anything else.
std::string roundOf(const std::string& path) {
    VoJson tree;
    if (!tree.read(OdAnsiString(path), -1, nullptr)) {
        return {};
    }
    const VoJsonPtr list = tree->getProperty("rounds");
    if (!list || list.ArrayCount() != kEntries) {
        return {};
    }
    std::set<std::string> texts;
    for (int entry = 0; entry < kEntries; ++entry) {
        texts.insert(list(entry)->strValue().str());
    }
    return texts.size() == 1 ? *texts.begin() : std::string();
}

class InterruptedSaves : public BootTest {
  protected:
    void SetUp() override {
        bootBare();
        const auto begin = std::chrono::steady_clock::now();
        fillRound("first", 0);
        vo_save_user_config("");
        ofOneSave = std::chrono::steady_clock::now() - begin;
        ASSERT_EQ(roundOf(userFile()), "first 0");
    }

    // A moment while the first or the second save goes on, however fast the machine is.
    void sleepAMoment(std::mt19937& random) const {
        constexpr long kSaves = 2;
        std::this_thread::sleep_for(std::chrono::nanoseconds(
            std::uniform_int_distribution<long>(0, kSaves * ofOneSave.count())(random)));
    }

    std::chrono::nanoseconds ofOneSave{};

    // Saves round after round in a process of its own.
    static pid_t startSaving(const std::string& writer, int rounds) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (int round = 1; round <= rounds; ++round) {
                fillRound(writer, round);
                vo_save_user_config("");
            }
            ::_exit(EXIT_SUCCESS);
        }
        return child;
    }
};

TEST_F(InterruptedSaves, NoDeathLeavesABrokenFile) {
    const char* const asked = std::getenv("VEMO_KILLS");
    const int kills = asked ? std::atoi(asked) : 1000;
    std::mt19937 random(1);
    std::set<std::string> seen;
    for (int kill = 0; kill < kills; ++kill) {
        const std::string writer = "writer " + std::to_string(kill);
        const pid_t child = startSaving(writer, 1 << 20);
        ASSERT_GT(child, 0);
        sleepAMoment(random);
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        const std::string round = roundOf(userFile());
        ASSERT_NE(round, "") << contentOf(userFile());
        seen.insert(round);
    }
    std::printf("%d kills, %zu different contents, all whole\n", kills, seen.size());
    EXPECT_GT(seen.size(), 10U) << "the deaths came before any save";
}

TEST_F(InterruptedSaves, OfTwoApplicationsTheLastWinsWhole) {
    constexpr int kRounds = 150;
    const pid_t writers[] = {startSaving("a", kRounds), startSaving("b", kRounds)};
    int status = 0;
    long reads = 0;
    for (const pid_t writer : writers) {
        while (::waitpid(writer, &status, WNOHANG) == 0) {
            ASSERT_NE(roundOf(userFile()), "");
            ++reads;
        }
        EXPECT_EQ(status, 0);
    }
    EXPECT_GT(reads, 0);
    const std::string last = std::to_string(kRounds);
    EXPECT_THAT(roundOf(userFile()), testing::AnyOf("a " + last, "b " + last));
    for (const auto& entry : std::filesystem::directory_iterator(folder.path("data"))) {
        EXPECT_EQ(entry.path(), userFile());
    }
}

}  // namespace
