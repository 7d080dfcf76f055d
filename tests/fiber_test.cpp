// The fiber service: order of running, reuse of records and threads, look-ups, tear-down.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

#include "fiber_world.h"

using namespace std::chrono_literals;

namespace {

int mainTag, tagA, tagB;

bool isOffOnAnotherThread(VoFiberSvr& service) {
    bool answer = false;
    std::thread([&] { answer = service.isOffCurrentFiber(); }).join();
    return answer;
}

// Counts the threads that have ended, of those that marked themselves.
std::atomic<int> endedThreads = 0;
struct EndOfThread {
    bool marked = false;
    ~EndOfThread() {
        if (marked) {
            // Long enough to be missed by whoever doesn't join the thread.
            std::this_thread::sleep_for(20ms);
            ++endedThreads;
        }
    }
};
thread_local EndOfThread endOfThread;

void neverRun(void*) {
    ADD_FAILURE() << "a fiber ran that nobody switched to";
}

}  // namespace

TEST(Fiber, AnswersWithNothingBeforeTheFirstConversion) {
    const VoFiberSvrPtr service = OdRxObjectImpl<VoFiberService>::createObject();
    service->switchToFiber(nullptr);
    service->switchToFiberByData(nullptr);
    service->deleteFiber(nullptr);
    EXPECT_EQ(service->currentFiber(), nullptr);
    EXPECT_EQ(service->currentFiberData(), nullptr);
    EXPECT_EQ(service->fiberData(nullptr), nullptr);
    EXPECT_EQ(service->findFiberByData(nullptr), nullptr);
    EXPECT_TRUE(service->isOffCurrentFiber());
    EXPECT_EQ(service->createFiber(0, neverRun, nullptr), nullptr);
    EXPECT_EQ(service->convertFiberToThread(nullptr), 0);
}

TEST(Fiber, RunsOneAfterTheOtherInTheOrderOfSwitches) {
    FiberWorld world(&mainTag);
    VoFiberHandle first = nullptr;
    VoFiberHandle second = nullptr;
    first = world.create([&] {
        world.trace += 'b';
        world.run(second);
        world.trace += 'd';
        EXPECT_EQ(world.service->currentFiber(), first);
        EXPECT_EQ(world.service->currentFiberData(), world.service->fiberData(first));
        EXPECT_FALSE(world.service->isOffCurrentFiber());
    });
    second = world.create([&] {
        world.trace += 'c';
        world.service->switchToFiberByData(world.service->fiberData(first));
        world.trace += 'f';
    });
    EXPECT_EQ(world.service->currentFiber(), world.main);
    world.trace += 'a';
    world.run(first);
    world.trace += 'e';
    world.run(second);
    world.trace += 'g';
    EXPECT_EQ(world.trace, "abcdefg");
    EXPECT_EQ(world.service->currentFiberData(), &mainTag);
    EXPECT_FALSE(world.service->isOffCurrentFiber());
    EXPECT_TRUE(isOffOnAnotherThread(*world.service));
}

TEST(Fiber, SwitchesNowhereForTheCurrentFiberNoFiberAndUnknownData) {
    FiberWorld world(&mainTag);
    world.service->createFiber(0, neverRun, &tagA);
    world.run(world.main);
    world.run(nullptr);
    world.service->switchToFiberByData(&mainTag);
    world.service->switchToFiberByData(&tagB);
    EXPECT_EQ(world.service->currentFiber(), world.main);
}

TEST(Fiber, ReusesTheLaterFreeRecordAndItsThread) {
    FiberWorld world;
    std::thread::id ranOn;
    const auto note = [&] { ranOn = std::this_thread::get_id(); };
    const VoFiberHandle earlier = world.create(note);
    const VoFiberHandle later = world.create(note, [&] { world.trace += "old tail, "; });
    world.create(note);
    world.run(earlier);
    world.run(later);
    const std::thread::id laterThread = ranOn;
    world.service->deleteFiber(later);
    world.service->deleteFiber(earlier);

    const VoFiberHandle reused = world.create([&] {
        note();
        world.trace += "new body";
    });
    EXPECT_EQ(reused, later);
    EXPECT_EQ(world.service->currentFiber(), world.main);
    EXPECT_EQ(world.trace, "old tail, ");
    world.run(reused);
    EXPECT_EQ(world.trace, "old tail, new body");
    EXPECT_EQ(ranOn, laterThread);
    EXPECT_EQ(world.create(note), earlier);
}

TEST(Fiber, ReusesTheLastFreeRecordInTheOrderOfCreation) {
    FiberWorld world;
    std::minstd_rand random(3);
    std::vector<VoFiberHandle> inOrder;
    std::vector<bool> isFree;
    const auto give = [&](std::size_t index) {
        world.run(inOrder[index]);
        world.service->deleteFiber(inOrder[index]);
        isFree[index] = true;
    };
    for (int step = 0; step < 600; ++step) {
        const std::size_t index = inOrder.empty() ? 0 : random() % inOrder.size();
        if (random() % 2 && !inOrder.empty() && !isFree[index]) {
            give(index);
            // Once more says nothing new.
            world.service->deleteFiber(inOrder[index]);
            continue;
        }
        const auto lastFree = std::find(isFree.rbegin(), isFree.rend(), true);
        const VoFiberHandle made = world.create([] {});
        if (lastFree == isFree.rend()) {
            EXPECT_EQ(std::count(inOrder.begin(), inOrder.end(), made), 0);
            inOrder.push_back(made);
            isFree.push_back(false);
        } else {
            *lastFree = false;
            EXPECT_EQ(made, inOrder[static_cast<std::size_t>(isFree.rend() - lastFree) - 1]);
        }
    }
    EXPECT_GT(inOrder.size(), 5u);
    EXPECT_EQ(world.service->convertFiberToThread(nullptr), 1);
}

TEST(Fiber, RunsWithinCreateWhenTheReusedRecordNeverRan) {
    FiberWorld world;
    const VoFiberHandle unused = world.service->createFiber(0, neverRun, nullptr);
    world.service->deleteFiber(unused);
    bool onMain = false;
    const VoFiberHandle reused = world.create([&] {
        onMain = world.service->currentFiber() == world.main;
        world.trace += onMain ? 'm' : 'r';
    });
    EXPECT_EQ(reused, unused);
    EXPECT_EQ(world.trace, "m");
    world.run(reused);
    EXPECT_EQ(world.trace, "mr");
}

TEST(Fiber, GivesTheBatonBackToItsCreatorWhenARoutineReturns) {
    FiberWorld world;
    const auto append = [](void* text) { static_cast<std::string*>(text)->push_back('x'); };
    const VoFiberHandle fiber = world.service->createFiber(0, append, &world.trace);
    world.run(fiber);
    EXPECT_EQ(world.trace, "x");
    EXPECT_EQ(world.service->currentFiber(), fiber) << "a return isn't a switch";
}

TEST(Fiber, FindsTheFirstRecordWithTheData) {
    FiberWorld world(&mainTag);
    VoFiberSvr& service = *world.service;
    const VoFiberHandle first = service.createFiber(0, neverRun, &tagA);
    const VoFiberHandle second = service.createFiber(0, neverRun, &tagA);
    const VoFiberHandle dataless = service.createFiber(0, neverRun, nullptr);
    EXPECT_EQ(service.findFiberByData(&mainTag), world.main);
    EXPECT_EQ(service.findFiberByData(&tagA), first);
    EXPECT_EQ(service.findFiberByData(&tagB), nullptr);
    EXPECT_EQ(service.findFiberByData(nullptr), dataless);
    service.deleteFiber(first);
    EXPECT_EQ(service.findFiberByData(&tagA), second);
    EXPECT_EQ(service.findFiberByData(nullptr), nullptr) << "the given-back record stands first";
}

TEST(Fiber, MovesTheBatonWithoutAHandOffAtASecondConversion) {
    FiberWorld world(&mainTag);
    VoFiberHandle second = nullptr;
    std::thread([&] { second = world.service->convertThreadToFiber(&tagA); }).join();
    EXPECT_NE(second, world.main);
    EXPECT_EQ(world.service->currentFiber(), second);
    EXPECT_EQ(world.service->findFiberByData(&mainTag), world.main);
    EXPECT_TRUE(world.service->isOffCurrentFiber());
    EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 0);
}

TEST(Fiber, CallsItsOtherOperationsThroughTheInterface) {
    struct Redirected : VoFiberService {
        VoFiberHandle findFiberByData(void*) override { return answer; }
        void switchToFiber(VoFiberHandle fiber) override { switchedTo = fiber; }
        VoFiberHandle answer = nullptr;
        VoFiberHandle switchedTo = nullptr;
    };
    const auto service = OdRxObjectImpl<Redirected>::createObject();
    const VoFiberHandle main = service->convertThreadToFiber(&mainTag);
    service->answer = main;
    service->switchToFiberByData(&tagA);
    EXPECT_EQ(service->switchedTo, main);
    EXPECT_EQ(service->convertFiberToThread(&tagA), 1);
}

TEST(Fiber, GivesNullAndGoesOnWhenNoThreadStarts) {
    FiberWorld world(&mainTag);
    const auto startThread = vofiber::systemCalls.startThread;
    vofiber::systemCalls.startThread = [](auto...) { return EAGAIN; };
    EXPECT_EQ(world.service->createFiber(0, neverRun, &tagA), nullptr);
    EXPECT_EQ(world.service->currentFiber(), world.main);
    EXPECT_EQ(world.service->findFiberByData(&tagA), nullptr);

    vofiber::systemCalls.startThread = startThread;
    world.run(world.create([&] { world.trace += 'x'; }));
    EXPECT_EQ(world.trace, "x");
}

TEST(FiberTearDown, EndsTheThreadsOfFreeRecordsAlone) {
    FiberWorld world(&mainTag);
    const auto markThread = [] { endOfThread.marked = true; };
    const VoFiberHandle ended = world.create(markThread, [&] { world.trace += "ended"; });
    const VoFiberHandle unused = world.service->createFiber(0, neverRun, nullptr);
    const VoFiberHandle suspended = world.create([&] {
        markThread();
        EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 0) << "on the wrong fiber";
        world.run(world.main);
        ADD_FAILURE() << "a fiber in use was woken";
    });
    const VoFiberHandle waiting = world.service->createFiber(0, neverRun, &tagA);
    world.run(ended);
    world.run(suspended);
    world.service->deleteFiber(ended);
    world.service->deleteFiber(unused);

    EXPECT_EQ(world.service->convertFiberToThread(&tagB), 0);
    EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 1);
    EXPECT_EQ(endedThreads, 1);
    EXPECT_EQ(world.trace, "ended");
    EXPECT_EQ(world.service->findFiberByData(&tagA), nullptr);
    EXPECT_EQ(world.service->fiberData(waiting), &tagA) << "its thread sleeps on in the record";
}

TEST(FiberTearDown, WaitsForAFiberOnItsWayToSleep) {
    static thread_local bool slowly = false;
    static std::atomic<bool> asleep = false;
    vofiber::systemCalls.wait = [](pthread_cond_t* cond, pthread_mutex_t* mutex) {
        if (slowly) {
            std::this_thread::sleep_for(20ms);
            asleep = true;
        }
        return pthread_cond_wait(cond, mutex);
    };
    FiberWorld world(&mainTag);
    world.run(world.create([] { slowly = true; }));
    EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 1);
    EXPECT_TRUE(asleep);
}

TEST(FiberTearDown, LeavesAServiceThatMakesNoMoreFibers) {
    FiberWorld world(&mainTag);
    const VoFiberHandle inUse = world.service->createFiber(0, neverRun, nullptr);
    ASSERT_EQ(world.service->convertFiberToThread(&mainTag), 1);
    EXPECT_EQ(world.service->currentFiber(), nullptr);
    EXPECT_TRUE(world.service->isOffCurrentFiber());
    EXPECT_EQ(world.service->convertFiberToThread(nullptr), 0);
    world.run(inUse);

    const VoFiberHandle main = world.service->convertThreadToFiber(&mainTag);
    EXPECT_EQ(world.service->currentFiber(), main);
    EXPECT_EQ(world.service->createFiber(0, neverRun, nullptr), nullptr);
    EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 0);
}

// A second life of the application converts the thread once more, and may have given the first
// record back: that one's thread isn't the service's to end.
TEST(FiberTearDown, OutlivesAGivenBackRecordOfTheCallersOwnThread) {
    FiberWorld world(&mainTag);
    world.service->convertThreadToFiber(&tagA);
    world.service->deleteFiber(world.main);
    EXPECT_EQ(world.service->convertFiberToThread(&tagA), 1);
}

TEST(FiberTearDown, IsSafeWhileAForeignThreadAsksWhereItIs) {
    FiberWorld world(&mainTag);
    std::atomic<bool> asking = false;
    std::atomic<bool> finished = false;
    std::thread foreign([&] {
        while (!finished) {
            EXPECT_TRUE(world.service->isOffCurrentFiber());
            asking = true;
            asking.notify_one();
        }
    });
    asking.wait(false);
    for (int round = 0; round < 100; ++round) {
        const VoFiberHandle fiber = world.create([&] { world.trace += 'x'; });
        world.run(fiber);
        world.service->deleteFiber(fiber);
    }
    EXPECT_EQ(world.service->convertFiberToThread(&mainTag), 1);
    finished = true;
    foreign.join();
    EXPECT_EQ(world.trace, std::string(100, 'x'));
}
