// Fetching a service by its key, and telling an event to ten reactors.
#include <benchmark/benchmark.h>
#include <drawing/runtime.h>

#include <array>
#include <atomic>
#include <map>
#include <string>
#include <vector>

#include "application.h"
#include "core/voexports.h"
#include "core/voservicekeys.h"
#include "core/vosiaprxevent.h"
#include "secondthread.h"

namespace {

// All that the library knows.
constexpr std::array kKeys = {
    vosi::kFiberKey,           vosi::kFiberCoroutineKey, vosi::kFindFontsKey,
    vosi::kMainUIKey,          vosi::kDocMgrKey,         vosi::kEditSystemKey,
    vosi::kAliasMgrKey,        vosi::kRemoteDebugSvrKey, vosi::kAutoTestKey,
    vosi::kRemoteDebugStubKey, vosi::kInputQueueKey,     vosi::kOpenWizardKey,
    vosi::kGetPasswordKey,
};

using Counted = OdRxObjectImpl<OdRxObject>;

// ---- look-up ----

// The application with something under every key.
class FullDictionary : private BareApplication {
  public:
    FullDictionary() {
        for (const OdChar* key : kKeys) {
            if (vo_arbitDict_getservice(key).isNull()) {
                vo_arbitDict_regservice(key, Counted::createObject());
                added.emplace_back(key);
            }
        }
    }
    FullDictionary(const FullDictionary&) = delete;
    FullDictionary& operator=(const FullDictionary&) = delete;
    // The application would call some of them at its end.
    ~FullDictionary() override {
        for (const OdString& key : added) {
            vo_arbitDict_clearservice(key);
        }
    }

  private:
    std::vector<OdString> added;
};

void getService(benchmark::State& state) {
    const FullDictionary application;
    const std::vector<OdString> keys(kKeys.begin(), kKeys.end());
    for ([[maybe_unused]] auto _ : state) {
        for (const OdString& key : keys) {
            OdRxObjectPtr service = vo_arbitDict_getservice(key);
            benchmark::DoNotOptimize(service);
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(keys.size()) * state.iterations());
}

// A pointer with an atomic count in what it points to.
class Pointer {
  public:
    explicit Pointer(std::atomic<long>* held) : count(held) {}
    Pointer(const Pointer& other) : count(other.count) {
        count->fetch_add(1, std::memory_order_relaxed);
    }
    Pointer& operator=(const Pointer&) = delete;
    ~Pointer() {
        if (count->fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete count;
        }
    }

  private:
    std::atomic<long>* count;
};

void findInMap(benchmark::State& state) {
    std::map<std::wstring, Pointer> services;
    const std::vector<std::wstring> keys(kKeys.begin(), kKeys.end());
    for (const std::wstring& key : keys) {
        services.emplace(key, Pointer(new std::atomic<long>(1)));
    }
    for ([[maybe_unused]] auto _ : state) {
        for (const std::wstring& key : keys) {
            Pointer service = services.find(key)->second;
            benchmark::DoNotOptimize(service);
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(keys.size()) * state.iterations());
}

template <void (*measure)(benchmark::State&)>
void withThreads(benchmark::State& state) {
    besideSecondThread(measure, state);
}

// ---- events ----

constexpr int kReactors = 10;
// The application brings one of its own.
constexpr int kAddedReactors = kReactors - 1;

class CountingReactor : public vosi::VosiApRxEventReactor {
  public:
    void onAppStarted() override { ++heard; }

    int heard = 0;
};

void fireEvent(benchmark::State& state) {
    const BareApplication application;
    const vosi::VosiApRxEventPtr dispatcher(odrxSysRegistry()->getAt(vosi::kRxEventKey));
    std::vector<OdSmartPtr<CountingReactor>> reactors;
    for (int made = 0; made < kAddedReactors; ++made) {
        reactors.push_back(OdRxObjectImpl<CountingReactor>::createObject());
        dispatcher->addReactor(reactors.back().get());
    }
    for ([[maybe_unused]] auto _ : state) {
        dispatcher->fireAppStarted();
    }
    if (reactors.back()->heard != state.iterations()) {
        state.SkipWithError("events were lost");
    }
}

// The pass as it is defined, but for the question whether an entry is a reactor.
void callOverCopy(benchmark::State& state) {
    std::vector<OdSmartPtr<vosi::VosiApRxEventReactor>> reactors;
    for (int made = 0; made < kReactors; ++made) {
        reactors.emplace_back(OdRxObjectImpl<CountingReactor>::createObject().get());
    }
    for ([[maybe_unused]] auto _ : state) {
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is measured.
        const auto pass = reactors;
        for (const auto& entry : pass) {
            // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): so is this one.
            const auto reactor = entry;
            reactor->onAppStarted();
        }
    }
}

}  // namespace

BENCHMARK(getService)->Name("get_service/ours");
BENCHMARK(findInMap)->Name("get_service/map");
BENCHMARK(withThreads<getService>)->Name("get_service_threads/ours");
BENCHMARK(withThreads<findInMap>)->Name("get_service_threads/map");
BENCHMARK(withThreads<fireEvent>)->Name("fire_event/ours");
BENCHMARK(withThreads<callOverCopy>)->Name("fire_event/copy");
