// Waits that return though nobody woke the fiber: at each of the four places where a fiber sleeps,
// and everywhere at random. The system makes such returns too rarely to be tested with, so the wait
// is replaced by one that makes them.
#include <gtest/gtest.h>

#include <random>
#include <semaphore>

#include "fiber_crowd.h"

namespace {

// How often the calling thread's next waits return at once, and the sign that they have done so.
thread_local int returnsLeft = 0;
std::counting_semaphore<> allReturned{0};

int returnAtOnce(pthread_mutex_t* mutex) {
    pthread_mutex_unlock(mutex);
    pthread_mutex_lock(mutex);
    return 0;
}

int waitAfterReturns(pthread_cond_t* cond, pthread_mutex_t* mutex) {
    if (returnsLeft == 0) {
        return pthread_cond_wait(cond, mutex);
    }
    if (--returnsLeft == 0) {
        allReturned.release();
    }
    return returnAtOnce(mutex);
}

int waitOrReturn(pthread_cond_t* cond, pthread_mutex_t* mutex) {
    static thread_local std::minstd_rand random;
    return random() % 2 ? returnAtOnce(mutex) : pthread_cond_wait(cond, mutex);
}

// Starts fibers' threads so that they do something first.
void (*beforeBody)() = nullptr;
void* (*threadBody)(void*) = nullptr;

void* bodyAfterPrelude(void* argument) {
    beforeBody();
    return threadBody(argument);
}

int startAfterPrelude(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*),
                      void* argument) {
    threadBody = body;
    return pthread_create(thread, attributes, bodyAfterPrelude, argument);
}

class FiberWakeup : public testing::Test {
  protected:
    FiberWakeup() { vofiber::systemCalls.wait = waitAfterReturns; }

    FiberWorld world;
};

}  // namespace

TEST_F(FiberWakeup, DoesNotEndASwitch) {
    const VoFiberHandle fiber = world.create([this] {
        allReturned.acquire();
        world.trace += 'b';
    });
    world.trace += 'a';
    returnsLeft = 3;
    world.run(fiber);
    world.trace += 'c';
    EXPECT_EQ(world.trace, "abc");
}

TEST_F(FiberWakeup, DoesNotEndTheCreatorsSleepAtBirth) {
    static bool threadRan = false;
    vofiber::systemCalls.startThread = startAfterPrelude;
    beforeBody = [] {
        allReturned.acquire();
        threadRan = true;
    };
    returnsLeft = 3;
    world.create([] {});
    EXPECT_TRUE(threadRan);
}

TEST_F(FiberWakeup, DoesNotEndTheCreatorsSleepAtReuse) {
    const VoFiberHandle fiber = world.create([] {},
                                             [this] {
                                                 allReturned.acquire();
                                                 world.trace += "old tail";
                                             });
    world.run(fiber);
    world.service->deleteFiber(fiber);
    returnsLeft = 3;
    EXPECT_EQ(world.create([] {}), fiber);
    EXPECT_EQ(world.trace, "old tail");
}

TEST_F(FiberWakeup, DoesNotStartARoutine) {
    vofiber::systemCalls.startThread = startAfterPrelude;
    beforeBody = [] { returnsLeft = 3; };
    const VoFiberHandle fiber = world.create([this] {
        world.trace += 'x';
        allReturned.release();
    });
    allReturned.acquire();
    EXPECT_EQ(world.trace, "");
    world.run(fiber);
    EXPECT_EQ(world.trace, "x");
}

// The threads of one crowd serve the next.
TEST_F(FiberWakeup, KeepsTheOrderUnderAStormOfReturns) {
    vofiber::systemCalls.wait = waitOrReturn;
    for (int round = 0; round < 20; ++round) {
        FiberCrowd crowd(world, 16);
        crowd.run(500);
        EXPECT_EQ(crowd.misdirected(), 0);
    }
}
