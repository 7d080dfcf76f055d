// A process counts references without atomic operations until it has a second thread.
#pragma once

#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

/// The measurement in a process that has a second thread, which sleeps.
template <class Measure, class... Arguments>
void besideSecondThread(Measure measure, benchmark::State& state, Arguments&&... arguments) {
    static std::jthread second([](const std::stop_token& stop) {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any().wait(lock, stop, [] { return false; });
    });
    measure(state, std::forward<Arguments>(arguments)...);
}
