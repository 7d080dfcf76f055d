// Fibers in numbers.
#include <gtest/gtest.h>
#include <sched.h>

#include <array>
#include <random>

#include "fiber_world.h"

namespace {

int mainTag;

// Keeps the test and the threads it starts on one core. One fiber runs at a time anyway, and a
// switch within a core is several times faster. Nothing for the product: modules' threads would
// inherit it.
void stayOnOneCore() {
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(sched_getcpu(), &one);
    sched_setaffinity(0, sizeof one, &one);
}

}  // namespace

TEST(FiberStress, SwitchesAMillionTimesAmong64Fibers) {
    stayOnOneCore();
    constexpr int kSwitches = 1'000'000;
    FiberWorld world(&mainTag);
    std::minstd_rand random;
    std::array<VoFiberHandle, 64> fibers{};
    std::array<int, 64> runs{};
    VoFiberHandle expected = nullptr;
    int switches = 0;
    int misdirected = 0;
    const auto handOnUntilDone = [&] {
        while (switches < kSwitches) {
            misdirected += world.service->currentFiber() != expected;
            const std::size_t next = random() % fibers.size();
            if (fibers[next] == expected) {
                continue;
            }
            ++switches;
            ++runs[next];
            expected = fibers[next];
            world.run(expected);
        }
    };
    for (VoFiberHandle& fiber : fibers) {
        fiber = world.create(handOnUntilDone);
    }
    // The first switch goes on until the count is reached; the others find it reached and end.
    for (const VoFiberHandle fiber : fibers) {
        expected = fiber;
        world.run(fiber);
        world.service->deleteFiber(fiber);
    }
    EXPECT_EQ(switches, kSwitches);
    EXPECT_EQ(misdirected, 0);
    for (const int count : runs) {
        EXPECT_GT(count, 0);
    }
    EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 1);
}

TEST(FiberStress, KeepsAsManyThreadsAsFibersWereAliveAtOnce) {
    stayOnOneCore();
    static int threads = 0;
    vofiber::systemCalls.startThread = [](auto... arguments) {
        ++threads;
        return pthread_create(arguments...);
    };
    FiberWorld world(&mainTag);
    int ran = 0;
    for (int round = 0; round < 1000; ++round) {
        std::array<VoFiberHandle, 4> alive{};
        for (VoFiberHandle& fiber : alive) {
            fiber = world.create([&ran] { ++ran; });
        }
        for (const VoFiberHandle fiber : alive) {
            world.run(fiber);
            world.service->deleteFiber(fiber);
        }
    }
    EXPECT_EQ(ran, 4000);
    EXPECT_EQ(threads, 4);
    EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 1);
}
