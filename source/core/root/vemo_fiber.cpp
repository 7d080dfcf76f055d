// Fibers made of threads, and the hand-off of the baton between them.
//
// Each fiber has a mutex, a condition and a count of its wakes. A fiber that doesn't run sleeps on
// its own condition, or is about to and holds its own mutex until that sleep releases it. A switch:
//
//   A, the running fiber                            B, the target
//                                                   wait(B.cond, B.mutex)
//   lock A.mutex, note A.wakes                        :
//   lock B.mutex    <- granted only when B sleeps,    :
//   current = B        so no wake is ever lost        :
//   ++B.wakes                                         :
//   unlock B.mutex                                    :
//   signal B.cond  - - - - - - - - - - - - - - - - -> B.wakes has changed: unlock B.mutex, run.
//   wait(A.cond, A.mutex)  <- releases A.mutex;       A switch back to A blocks on A.mutex until
//     : until A.wakes changes                         A truly sleeps.
//   unlock A.mutex, run
//
// A wait may also return by itself; the count tells such a return from a wake. `current` can't: a
// creator sleeps and is woken while it is current all along.
//
// Birth: the creator C locks C.mutex, starts the thread of R and sleeps as A does. That thread
// locks R.mutex, wakes C and comes to rest on R.cond, until the first switch to R sends it into the
// routine. When the routine returns, the thread goes the same way again: it wakes R.next and rests.
//
// Reuse: the thread of a fiber that ended sleeps in the last switch of its routine. C wakes it
// there and sleeps; the old routine returns, and the thread wakes C and rests as at birth. The
// thread of a record that was given back before its first run rests already: it goes straight on to
// the new routine while C, still current, sleeps in createFiber until that routine has returned.
//
// Thread rule: fields of records and all state below belong to the holder of the baton; each
// hand-off passes them on through the mutexes. Other threads may read `current` and `currentThread`
// alone. Lock order: own mutex, then the target's, then listMutex; the tear-down, when nobody else
// runs, takes records' mutexes under listMutex.
#include "vemo_fiber.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {

// What `next` of a record may hold in place of a record.
constexpr std::intptr_t FIBER_FREE = -1;
constexpr std::intptr_t FIBER_TERMINATE = -2;

}  // namespace

struct VoFiberRecord {
    VoFiberRecord* self;      // null once given back
    VoFiberRoutine routine;   // null for a converted thread
    void* ownedBlock;         // a block of malloc that goes with the record
    std::int64_t originMark;  // -1 for a converted thread, 0 for a created fiber
    void* data;
    pthread_mutex_t mutex;
    pthread_cond_t cond;
    pthread_t thread;
    std::intptr_t next;  // whom the thread wakes at the head of its loop, 0 for a converted thread;
                         // or FIBER_FREE, FIBER_TERMINATE
    std::uint32_t wakes;     // how often the fiber was woken; guarded by mutex
    std::uint32_t position;  // in the list
    VoFiberRecord* older;    // link of the chain at newestRecord
};

namespace vofiber {

SystemCalls systemCalls = {&pthread_cond_wait, &pthread_create};

}  // namespace vofiber

namespace {

std::vector<VoFiberRecord*> fiberList;  // in order of creation; never compacted
// The positions of the free ones, a heap with the last of them on top, which is the next to be
// used.
std::vector<std::uint32_t> freePositions;
pthread_mutex_t listMutex = PTHREAD_MUTEX_INITIALIZER;
bool tornDown = false;

// Foreign threads compare themselves with currentThread rather than look into the record, which the
// tear-down may free at that moment.
std::atomic<VoFiberRecord*> current = nullptr;
std::atomic<pthread_t> currentThread = pthread_t{};

// All records that stand, for leak checkers: records of fibers that still sleep when the service or
// the process ends are never freed, and neither is one whose thread couldn't be started.
VoFiberRecord* newestRecord = nullptr;

void setCurrent(VoFiberRecord* fiber) {
    currentThread = fiber->thread;
    current = fiber;
}

// A fiber's own side of a hand-off, from the lock of its mutex to the unlock. Since the wakes are
// read under the lock, whatever wakes the fiber from then on ends its sleep.
class HandOff {
  public:
    explicit HandOff(VoFiberRecord& sleeper) : own(sleeper) {
        pthread_mutex_lock(&own.mutex);
        wakesBefore = own.wakes;
    }
    HandOff(const HandOff&) = delete;
    HandOff& operator=(const HandOff&) = delete;
    ~HandOff() { pthread_mutex_unlock(&own.mutex); }

    void sleep() {
        while (own.wakes == wakesBefore) {
            vofiber::systemCalls.wait(&own.cond, &own.mutex);
        }
    }

  private:
    VoFiberRecord& own;
    std::uint32_t wakesBefore = 0;
};

// Makes the change while the target is known to sleep, and wakes it. The lock is the proof that it
// sleeps, and is taken for that even where nothing is to be changed.
template <class Change>
void wake(VoFiberRecord& target, Change change) {
    pthread_mutex_lock(&target.mutex);
    change();
    ++target.wakes;
    pthread_mutex_unlock(&target.mutex);
    pthread_cond_signal(&target.cond);
}

void wake(VoFiberRecord& target) {
    wake(target, [] {});
}

// Out of the free ones; null when there is none.
VoFiberRecord* takeLastFreeRecord() {
    VoFiberRecord* last = nullptr;
    pthread_mutex_lock(&listMutex);
    if (!freePositions.empty()) {
        std::pop_heap(freePositions.begin(), freePositions.end());
        last = fiberList[freePositions.back()];
        freePositions.pop_back();
    }
    pthread_mutex_unlock(&listMutex);
    return last;
}

// A zero-filled record and room for it in both lists, so that its entry there, with mutexes held
// and a thread started, or as it is given back, can't fail.
VoFiberRecord* makeRecord() {
    if (fiberList.size() == fiberList.capacity()) {
        fiberList.reserve(2 * fiberList.size() + 1);
        freePositions.reserve(fiberList.capacity());
    }
    auto* record = new VoFiberRecord{};
    pthread_mutex_init(&record->mutex, nullptr);
    pthread_cond_init(&record->cond, nullptr);
    record->older = std::exchange(newestRecord, record);
    return record;
}

void enterIntoList(VoFiberRecord& record) {
    record.position = static_cast<std::uint32_t>(fiberList.size());
    fiberList.push_back(&record);
}

void freeRecord(VoFiberRecord* record) {
    VoFiberRecord** link = &newestRecord;
    while (*link != record) {
        link = &(*link)->older;
    }
    *link = record->older;
    delete record;
}

void destroySynchronisation(VoFiberRecord& record) {
    pthread_mutex_destroy(&record.mutex);
    pthread_cond_destroy(&record.cond);
}

// The head of the loop: wakes whoever waits for the thread to get here, and rests until the fiber
// is switched to or its record used again. False when the thread is to end.
bool comeToRest(VoFiberRecord& fiber) {
    HandOff handOff(fiber);
    if (fiber.next == FIBER_TERMINATE) {
        return false;
    }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the field doubles as state.
    wake(*reinterpret_cast<VoFiberRecord*>(fiber.next));
    handOff.sleep();
    return fiber.next != FIBER_TERMINATE;
}

// The whole life of a fiber's thread.
void* fiberThreadBody(void* argument) {
    VoFiberRecord& fiber = *static_cast<VoFiberRecord*>(argument);
    while (comeToRest(fiber)) {
        fiber.routine(fiber.data);
    }
    return nullptr;
}

// Has a free record's thread come to rest at the head of its loop while the creator sleeps.
void reuseThread(VoFiberRecord& fiber, VoFiberRecord& creator) {
    HandOff handOff(creator);
    wake(fiber);
    handOff.sleep();
}

bool startThread(VoFiberRecord& fiber, VoFiberRecord& creator) {
    HandOff handOff(creator);
    if (vofiber::systemCalls.startThread(&fiber.thread, nullptr, fiberThreadBody, &fiber) != 0) {
        return false;
    }
    pthread_mutex_lock(&listMutex);
    enterIntoList(fiber);
    pthread_mutex_unlock(&listMutex);
    handOff.sleep();
    return true;
}

// A fiber that has handed over may still be on its way from the target's wake to its own sleep,
// with the target's condition in hand. Its mutex is free only when it sleeps.
void awaitSleepOfOthers(const VoFiberRecord* caller) {
    for (VoFiberRecord* record : fiberList) {
        if (record != caller) {
            pthread_mutex_lock(&record->mutex);
            pthread_mutex_unlock(&record->mutex);
        }
    }
}

void endThread(VoFiberRecord& fiber) {
    wake(fiber, [&fiber] { fiber.next = FIBER_TERMINATE; });
    pthread_join(fiber.thread, nullptr);
    destroySynchronisation(fiber);
}

}  // namespace

VoFiberHandle VoFiberService::createFiber(std::size_t /*stackSize*/, VoFiberRoutine routine,
                                          void* data) {
    VoFiberRecord* creator = current;
    if (!creator || tornDown) {
        return nullptr;
    }
    VoFiberRecord* reused = takeLastFreeRecord();
    VoFiberRecord* fiber = reused ? reused : makeRecord();
    fiber->self = fiber;
    fiber->routine = routine;
    fiber->ownedBlock = nullptr;
    fiber->originMark = 0;
    fiber->data = data;
    fiber->next = reinterpret_cast<std::intptr_t>(creator);
    if (reused) {
        reuseThread(*fiber, *creator);
        return fiber;
    }
    return startThread(*fiber, *creator) ? fiber : nullptr;
}

VoFiberHandle VoFiberService::convertThreadToFiber(void* data) {
    VoFiberRecord* fiber = makeRecord();
    fiber->self = fiber;
    fiber->originMark = -1;
    fiber->data = data;
    fiber->thread = pthread_self();
    enterIntoList(*fiber);
    setCurrent(fiber);
    return fiber;
}

int VoFiberService::convertFiberToThread(void* data) {
    VoFiberRecord* caller = findFiberByData(data);
    if (!caller || caller != current || tornDown) {
        return 0;
    }
    awaitSleepOfOthers(caller);
    destroySynchronisation(*caller);
    pthread_mutex_lock(&listMutex);
    current = nullptr;
    for (VoFiberRecord* record : fiberList) {
        const bool isFree = record->next == FIBER_FREE;
        if (isFree) {
            endThread(*record);
        }
        std::free(std::exchange(record->ownedBlock, nullptr));
        // A fiber in use sleeps on in its record, which therefore stays.
        if (isFree || record == caller) {
            freeRecord(record);
        }
    }
    fiberList.clear();
    freePositions.clear();
    pthread_mutex_unlock(&listMutex);
    pthread_mutex_destroy(&listMutex);
    tornDown = true;
    return 1;
}

void VoFiberService::switchToFiber(VoFiberHandle fiber) {
    VoFiberRecord* from = current;
    if (!from || !fiber || from->self == fiber) {
        return;
    }
    HandOff handOff(*from);
    wake(*fiber, [fiber] { setCurrent(fiber); });
    handOff.sleep();
}

void VoFiberService::switchToFiberByData(void* data) {
    if (VoFiberHandle fiber = findFiberByData(data)) {
        switchToFiber(fiber);
    }
}

void VoFiberService::deleteFiber(VoFiberHandle fiber) {
    if (fiber) {
        if (fiber->next != FIBER_FREE) {
            freePositions.push_back(fiber->position);
            std::push_heap(freePositions.begin(), freePositions.end());
        }
        fiber->self = nullptr;
        fiber->routine = nullptr;
        fiber->data = nullptr;
        fiber->next = FIBER_FREE;
    }
}

void* VoFiberService::fiberData(VoFiberHandle fiber) {
    return fiber ? fiber->data : nullptr;
}

void* VoFiberService::currentFiberData() {
    return fiberData(current);
}

VoFiberHandle VoFiberService::currentFiber() {
    return current;
}

VoFiberHandle VoFiberService::findFiberByData(void* data) {
    for (const VoFiberRecord* record : fiberList) {
        if (record && record->data == data) {
            return record->self;
        }
    }
    return nullptr;
}

bool VoFiberService::isOffCurrentFiber() {
    return !current || !pthread_equal(currentThread, pthread_self());
}
