// Fibers in numbers.
#include <gtest/gtest.h>
#include <sched.h>

#include <array>

#include "fiber_crowd.h"

namespace {

int mainTag;

// Keeps the test and the threads it starts on one core. One fiber runs at a time anyway, and a
// switch within a core is several times faster. Nothing for the product: modules' threads would
// inherit it.
void stayOnOneCore() {
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<unsigned int>(sched_getcpu()), &one);
    sched_setaffinity(0, sizeof one, &one);
}

}  // namespace

TEST(FiberStress, SwitchesAMillionTimesAmong64Fibers) {
    stayOnOneCore();
    FiberWorld world(&mainTag);
    FiberCrowd crowd(world, 64);
    crowd.run(1'000'000);
    EXPECT_EQ(crowd.misdirected(), 0);
    EXPECT_GT(crowd.fewestTurns(), 10'000);
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
