// The fiber service: handing the baton on, making fibers, and what a parked fiber costs.
//
// The fiber world is one of a process, so all groups share one, with the main thread as its root
// fiber. The baselines are what one would write with threads alone.
#include <benchmark/benchmark.h>
#include <pthread.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "vemo_fiber.h"

namespace {

constexpr int kParked = 10'000;
constexpr const char* kLimited = "threads are limited here";

VoFiberSvr& fibers() {
    static const VoFiberSvrPtr service = [] {
        VoFiberSvrPtr made = OdRxObjectImpl<VoFiberService>::createObject();
        made->convertThreadToFiber(nullptr);
        return made;
    }();
    return *service;
}

// Keeps the calling thread, and the threads that it starts, on one core.
class OnOneCore {
  public:
    OnOneCore() {
        sched_getaffinity(0, sizeof before, &before);
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<unsigned int>(sched_getcpu()), &one);
        sched_setaffinity(0, sizeof one, &one);
    }
    OnOneCore(const OnOneCore&) = delete;
    OnOneCore& operator=(const OnOneCore&) = delete;
    ~OnOneCore() { sched_setaffinity(0, sizeof before, &before); }

  private:
    cpu_set_t before;
};

class AnyPlacement {};

// ---- hand-off ----

// A fiber that gives the baton to the next one, round after round, until it is told to stop; then
// to the main one for good.
struct Ring {
    struct Member {
        Ring* ring = nullptr;
        VoFiberHandle fiber = nullptr;
        VoFiberHandle next = nullptr;
    };

    explicit Ring(std::size_t size) : members(size) {
        VoFiberHandle following = fibers().currentFiber();
        for (std::size_t place = size; place-- > 0;) {
            Member& member = members[place];
            member.ring = this;
            member.next = following;
            following = member.fiber = fibers().createFiber(0, &run, &member);
            whole = whole && following;
        }
    }
    Ring(const Ring&) = delete;
    Ring& operator=(const Ring&) = delete;
    ~Ring() {
        stopping = true;
        for (const Member& member : members) {
            if (member.fiber) {
                fibers().switchToFiber(member.fiber);
                fibers().deleteFiber(member.fiber);
            }
        }
    }

    /// Once around: as many hand-offs as members, and one back to the caller.
    void turn() { fibers().switchToFiber(members.front().fiber); }

    static void run(void* data) {
        const Member& self = *static_cast<Member*>(data);
        while (!self.ring->stopping) {
            fibers().switchToFiber(self.next);
        }
        fibers().switchToFiber(self.ring->main);
    }

    VoFiberHandle main = fibers().currentFiber();
    std::vector<Member> members;
    bool stopping = false;
    bool whole = true;
};

template <class Placement>
void fiberHandOff(benchmark::State& state) {
    [[maybe_unused]] const Placement placement;
    fibers();
    Ring ring(1);
    for ([[maybe_unused]] auto _ : state) {
        ring.turn();
    }
    state.SetItemsProcessed(2 * state.iterations());
}

// Two threads that take turns: one mutex, and a condition for each.
class TwoThreads {
  public:
    TwoThreads() : other([this] { takeTurns(); }) {}
    TwoThreads(const TwoThreads&) = delete;
    TwoThreads& operator=(const TwoThreads&) = delete;
    ~TwoThreads() {
        {
            const std::lock_guard lock(mutex);
            stopping = true;
            othersTurn = true;
        }
        forOther.notify_one();
        other.join();
    }

    void turn() {
        std::unique_lock lock(mutex);
        othersTurn = true;
        forOther.notify_one();
        forMain.wait(lock, [this] { return !othersTurn; });
    }

  private:
    void takeTurns() {
        std::unique_lock lock(mutex);
        for (;;) {
            forOther.wait(lock, [this] { return othersTurn; });
            if (stopping) {
                return;
            }
            othersTurn = false;
            forMain.notify_one();
        }
    }

    std::mutex mutex;
    std::condition_variable forMain;
    std::condition_variable forOther;
    bool othersTurn = false;
    bool stopping = false;
    std::thread other;
};

template <class Placement>
void threadHandOff(benchmark::State& state) {
    [[maybe_unused]] const Placement placement;
    TwoThreads pair;
    for ([[maybe_unused]] auto _ : state) {
        pair.turn();
    }
    state.SetItemsProcessed(2 * state.iterations());
}

void roundOfHandOffs(benchmark::State& state) {
    const OnOneCore placement;
    fibers();
    // One of the ring is the caller.
    Ring ring(static_cast<std::size_t>(state.range(0)) - 1);
    if (!ring.whole) {
        state.SkipWithError(kLimited);
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        ring.turn();
    }
    state.SetItemsProcessed(state.range(0) * state.iterations());
}

// The same of threads alone: one mutex, and a condition for each.
class ThreadRing {
  public:
    explicit ThreadRing(std::size_t size) : places(size) {
        try {
            for (std::size_t index = 1; index < size; ++index) {
                places[index].thread = std::thread([this, index] { run(index); });
            }
        } catch (const std::system_error&) {
            whole = false;
        }
    }
    ThreadRing(const ThreadRing&) = delete;
    ThreadRing& operator=(const ThreadRing&) = delete;
    ~ThreadRing() {
        {
            const std::lock_guard lock(mutex);
            stopping = true;
        }
        for (Place& place : places) {
            place.condition.notify_one();
            if (place.thread.joinable()) {
                place.thread.join();
            }
        }
    }

    bool isWhole() const { return whole; }

    /// Once around.
    void turn() {
        std::unique_lock lock(mutex);
        handOn(0);
        places[0].condition.wait(lock, [this] { return current == 0; });
    }

  private:
    struct Place {
        std::condition_variable condition;
        std::thread thread;
    };

    void handOn(std::size_t from) {
        current = (from + 1) % places.size();
        places[current].condition.notify_one();
    }

    void run(std::size_t index) {
        std::unique_lock lock(mutex);
        for (;;) {
            places[index].condition.wait(lock, [&] { return stopping || current == index; });
            if (stopping) {
                return;
            }
            handOn(index);
        }
    }

    std::mutex mutex;
    std::vector<Place> places;
    std::size_t current = 0;
    bool stopping = false;
    bool whole = true;
};

void roundOfThreads(benchmark::State& state) {
    const OnOneCore placement;
    ThreadRing ring(static_cast<std::size_t>(state.range(0)));
    if (!ring.isWhole()) {
        state.SkipWithError(kLimited);
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        ring.turn();
    }
    state.SetItemsProcessed(state.range(0) * state.iterations());
}

// ---- creation ----

void endAtOnce(void* main) {
    fibers().switchToFiber(static_cast<VoFiberHandle>(main));
}

// Run and given back, so that its record is free and its thread where a fiber's end leaves it.
void runAndGiveBack(VoFiberHandle fiber) {
    fibers().switchToFiber(fiber);
    fibers().deleteFiber(fiber);
}

void createOnFreeRecord(benchmark::State& state) {
    const OnOneCore placement;
    const VoFiberHandle main = (fibers(), fibers().currentFiber());
    runAndGiveBack(fibers().createFiber(0, endAtOnce, main));
    for ([[maybe_unused]] auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        const VoFiberHandle fiber = fibers().createFiber(0, endAtOnce, main);
        const auto end = std::chrono::steady_clock::now();
        state.SetIterationTime(std::chrono::duration<double>(end - begin).count());
        runAndGiveBack(fiber);
    }
}

// Every one a thread more: the records stay in use.
void createOnNewRecord(benchmark::State& state) {
    const OnOneCore placement;
    const VoFiberHandle main = (fibers(), fibers().currentFiber());
    for ([[maybe_unused]] auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        const VoFiberHandle fiber = fibers().createFiber(0, endAtOnce, main);
        const auto end = std::chrono::steady_clock::now();
        if (!fiber) {
            state.SkipWithError(kLimited);
            return;
        }
        state.SetIterationTime(std::chrono::duration<double>(end - begin).count());
    }
}

// ---- memory ----

double residentBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return 1024 * std::stod(line.substr(line.find(':') + 1));
        }
    }
    return 0;
}

bool parkFibers() {
    for (int made = 0; made < kParked; ++made) {
        if (!fibers().createFiber(0, endAtOnce, nullptr)) {
            return false;
        }
    }
    return true;
}

// Threads that have come to their sleep, which nobody ends.
bool parkThreads() {
    static std::mutex mutex;
    static std::condition_variable never;
    static std::atomic<int> parked = 0;
    for (int made = 0; made < kParked; ++made) {
        pthread_t thread{};
        const auto body = [](void*) -> void* {
            std::unique_lock lock(mutex);
            ++parked;
            parked.notify_one();
            never.wait(lock, [] { return false; });
            return nullptr;
        };
        if (pthread_create(&thread, nullptr, body, nullptr) != 0) {
            return false;
        }
        parked.wait(made);
    }
    return true;
}

// Resident bytes a parked one, negative when not all could be made. In a process of its own, since
// the stacks of ended threads stay.
template <bool (*park)()>
double bytesOfParked() {
    int ends[2];
    if (pipe(ends) != 0) {
        return -1;
    }
    if (fork() == 0) {
        const double before = residentBytes();
        const bool whole = park();
        const double bytes = whole ? (residentBytes() - before) / kParked : -1;
        [[maybe_unused]] const ssize_t written = write(ends[1], &bytes, sizeof bytes);
        _exit(EXIT_SUCCESS);
    }
    close(ends[1]);
    double bytes = -1;
    [[maybe_unused]] const ssize_t got = read(ends[0], &bytes, sizeof bytes);
    close(ends[0]);
    wait(nullptr);
    return bytes;
}

template <bool (*park)()>
void parked(benchmark::State& state) {
    double bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        bytes = bytesOfParked<park>();
    }
    if (bytes < 0) {
        state.SkipWithError(kLimited);
    }
    state.counters["bytes"] = bytes;
}

}  // namespace

BENCHMARK(fiberHandOff<OnOneCore>)->Name("handoff_one_core/ours")->UseRealTime();
BENCHMARK(threadHandOff<OnOneCore>)->Name("handoff_one_core/threads")->UseRealTime();
BENCHMARK(fiberHandOff<AnyPlacement>)->Name("handoff_anywhere/ours")->UseRealTime();
BENCHMARK(threadHandOff<AnyPlacement>)->Name("handoff_anywhere/threads")->UseRealTime();
BENCHMARK(createOnFreeRecord)->Name("fiber_creation/ours")->UseManualTime()->Iterations(500);
BENCHMARK(createOnNewRecord)->Name("fiber_creation/new_record")->UseManualTime()->Iterations(500);
BENCHMARK(parked<parkFibers>)->Name("parked/ours")->Iterations(1);
BENCHMARK(parked<parkThreads>)->Name("parked/threads")->Iterations(1);
// Few to many.
void roundSizes(benchmark::internal::Benchmark* rounds) {
    for (const int size : {2, 10, 100, 1000, kParked}) {
        rounds->Arg(size);
    }
    rounds->UseRealTime();
}

BENCHMARK(roundOfHandOffs)->Name("handoff_round")->Apply(roundSizes);
BENCHMARK(roundOfThreads)->Name("thread_round")->Apply(roundSizes);
