#include "sequence_fibers_world.h"

// A process has one fiber world, which doesn't come back once it was taken down. So that each run
// starts from nothing, the unit's own state is set back, which takes being one unit with it.
// NOLINTNEXTLINE(bugprone-suspicious-include)
#include "vemo_fiber.cpp"

#include <sched.h>

#include <cerrno>
#include <chrono>
#include <memory>
#include <set>
#include <thread>

#include "core/voexports.h"
#include "core/voservicekeys.h"

namespace {

OdRxObjectPtr fiberService, coroutineManager;

std::set<const VoFiberRecord*> carriedRecords;  // those for which a thread was started
std::atomic<int> started = 0;
std::atomic<int> ended = 0;
std::atomic<int> returnsLeft = 0;
std::atomic<int> dawdlesLeft = 0;
bool startFails = false;
bool startFailed = false;

struct Start {
    void* (*body)(void*);
    void* argument;
};

void* countedBody(void* argument) {
    const std::unique_ptr<Start> start(static_cast<Start*>(argument));
    void* const result = start->body(start->argument);
    ++ended;
    return result;
}

int startThread(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*),
                void* argument) {
    if (std::exchange(startFails, false)) {
        startFailed = true;
        return EAGAIN;
    }
    ++started;
    carriedRecords.insert(static_cast<VoFiberRecord*>(argument));
    return pthread_create(thread, attributes, countedBody, new Start{body, argument});
}

bool takeOne(std::atomic<int>& left) {
    int seen = left;
    while (seen > 0 && !left.compare_exchange_weak(seen, seen - 1)) {
    }
    return seen > 0;
}

int wait(pthread_cond_t* cond, pthread_mutex_t* mutex) {
    if (takeOne(returnsLeft)) {
        pthread_mutex_unlock(mutex);
        sched_yield();
        pthread_mutex_lock(mutex);
        return 0;
    }
    if (takeOne(dawdlesLeft)) {
        // Long enough for the other side to come back, if nothing holds it.
        std::this_thread::sleep_for(std::chrono::microseconds(20));
    }
    return pthread_cond_wait(cond, mutex);
}

}  // namespace

OdRxObjectPtr vo_arbitDict_getservice(const OdString& key) {
    return key == vosi::kFiberKey            ? fiberService
           : key == vosi::kFiberCoroutineKey ? coroutineManager
                                             : OdRxObjectPtr();
}

namespace sequence {

RecordView viewOf(VoFiberHandle record) {
    const bool isFree = record->next == FIBER_FREE;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the field doubles as state.
    auto* const next = isFree ? nullptr : reinterpret_cast<VoFiberRecord*>(record->next);
    return {record->self, record->routine, record->data, next, isFree, record->originMark == -1};
}

std::vector<VoFiberHandle> listedRecords() {
    return fiberList;
}

std::size_t standingRecords() {
    std::size_t count = 0;
    for (const VoFiberRecord* record = newestRecord; record; record = record->older) {
        ++count;
    }
    return count;
}

void hookSystemCalls() {
    started = ended = returnsLeft = dawdlesLeft = 0;
    startFails = startFailed = false;
    vofiber::systemCalls = {&wait, &startThread};
}

void failNextStart() {
    startFails = true;
}

bool takeStartFailure() {
    startFails = false;
    return std::exchange(startFailed, false);
}

void returnFromWaits(int count) {
    returnsLeft = count;
}

void dawdleBeforeWaits(int count) {
    dawdlesLeft = count;
}

int startedThreads() {
    return started;
}

int endedThreads() {
    return ended;
}

void forgetFibers() {
    while (VoFiberRecord* record = newestRecord) {
        if (record->originMark == 0 && carriedRecords.count(record) != 0) {
            endThread(*record);
        } else {
            destroySynchronisation(*record);
        }
        freeRecord(record);
    }
    carriedRecords.clear();
    fiberList = {};
    pthread_mutex_init(&listMutex, nullptr);
    tornDown = false;
    current = nullptr;
    currentThread = pthread_t{};
}

void registerFibers(VoFiberSvr* service) {
    fiberService = OdRxObjectPtr(service);
}

void registerManager(vosi::VosiCoroutineManagerSvr* manager) {
    coroutineManager = OdRxObjectPtr(manager);
}

}  // namespace sequence
