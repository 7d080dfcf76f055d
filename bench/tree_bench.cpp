// Look-ups in value trees beside plain containers, and how reading, building and looking up grow.
//
// The peers hand out what getProperty does: a pointer with an atomically counted reference.
#include <benchmark/benchmark.h>
#include <drawing/runtime.h>
#include <mempool/mempool.h>
#include <utils/elementvalue.h>
#include <utils/vojson.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "secondthread.h"
#include "support/testfolder.h"

namespace {

/// The least that can be held by a counted pointer.
class Counted {
  public:
    explicit Counted(int number) : value(number) {}
    void addRef() { references.fetch_add(1, std::memory_order_relaxed); }
    void release() {
        if (references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

  private:
    std::atomic<int> references{0};
    [[maybe_unused]] int value;
};

class CountedPtr {
  public:
    CountedPtr() = default;
    explicit CountedPtr(Counted* counted) : held(counted) { hold(); }
    CountedPtr(const CountedPtr& other) : held(other.held) { hold(); }
    CountedPtr(CountedPtr&& other) noexcept : held(std::exchange(other.held, nullptr)) {}
    CountedPtr& operator=(CountedPtr other) noexcept {
        std::swap(held, other.held);
        return *this;
    }
    ~CountedPtr() {
        if (held) {
            held->release();
        }
    }

  private:
    void hold() const {
        if (held) {
            held->addRef();
        }
    }

    Counted* held = nullptr;
};

/// Keys of a configuration's kind, all different.
std::vector<std::string> keysFor(std::size_t count) {
    std::vector<std::string> keys;
    for (std::size_t index = 0; index < count; ++index) {
        keys.push_back("member" + std::to_string(index));
    }
    return keys;
}

/// The keys in random order.
template <class Key>
std::vector<Key> questions(const std::vector<std::string>& keys) {
    std::vector<Key> asked(keys.begin(), keys.end());
    std::shuffle(asked.begin(), asked.end(), std::mt19937(3));
    return asked;
}

VoJsonPtr objectWith(const std::vector<OdAnsiString>& keys) {
    VoJsonPtr object = ElementValue::createObject(kElementObject);
    for (const OdAnsiString& key : keys) {
        object->set_propertyI(key, 1, false);
    }
    return object;
}

VoJsonPtr objectWith(const std::vector<std::string>& keys) {
    return objectWith(std::vector<OdAnsiString>(keys.begin(), keys.end()));
}

/// Runs the look-up over all questions, one after the other.
template <class Key, class LookUp>
void askAll(benchmark::State& state, const std::vector<Key>& asked, LookUp lookUp) {
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        auto found = lookUp(asked[next]);
        benchmark::DoNotOptimize(found);
        next = next + 1 < asked.size() ? next + 1 : 0;
    }
}

void lookUpMember(benchmark::State& state, std::size_t count) {
    const std::vector<std::string> keys = keysFor(count);
    const VoJsonPtr object = objectWith(keys);
    askAll(state, questions<OdAnsiString>(keys),
           [&object](const OdAnsiString& key) { return object->getProperty(key); });
}

void lookUpBesideThread(benchmark::State& state, std::size_t count) {
    besideSecondThread(lookUpMember, state, count);
}

void walkOfFive(benchmark::State& state) {
    std::vector<std::pair<std::string, CountedPtr>> members;
    for (const std::string& key : keysFor(5)) {
        members.emplace_back(key, new Counted(1));
    }
    askAll(state, questions<std::string>(keysFor(5)), [&members](const std::string& key) {
        for (const auto& [name, value] : members) {
            if (name == key) {
                return value;
            }
        }
        return CountedPtr();
    });
}

void hashMapOf(benchmark::State& state, std::size_t count) {
    const std::vector<std::string> keys = keysFor(count);
    std::unordered_map<std::string, CountedPtr> members;
    for (const std::string& key : keys) {
        members.emplace(key, new Counted(1));
    }
    askAll(state, questions<std::string>(keys), [&members](const std::string& key) {
        const auto found = members.find(key);
        return found != members.end() ? found->second : CountedPtr();
    });
}

/// Four levels, each of a few members, as configurations have them.
VoJsonPtr nestedTree() {
    VoJsonPtr root = ElementValue::createObject(kElementObject);
    VoJsonPtr level = root;
    for (const char* step : {"User", "SubstituteFont", "ByType"}) {
        level->set_propertyI("version", 1, false);
        level->set_propertyB("enabled", true, false);
        level = level->set_propertyJ(step, ElementValue::createObject(kElementObject));
    }
    level->set_propertys("FontTypeBig", "gbcbig.shx", false);
    level->set_propertys("FontTypeShx", "txt.shx", false);
    return root;
}

void pathOfFour(benchmark::State& state) {
    const VoJsonPtr root = nestedTree();
    const OdAnsiString path("User/SubstituteFont/ByType/FontTypeShx");
    for ([[maybe_unused]] auto _ : state) {
        VoJsonPtr found = root->quickGetProperty(path);
        benchmark::DoNotOptimize(found);
    }
}

void fourLookUps(benchmark::State& state) {
    const VoJsonPtr root = nestedTree();
    const OdAnsiString first("User");
    const OdAnsiString second("SubstituteFont");
    const OdAnsiString third("ByType");
    const OdAnsiString fourth("FontTypeShx");
    for ([[maybe_unused]] auto _ : state) {
        VoJsonPtr found =
            root->getProperty(first)->getProperty(second)->getProperty(third)->getProperty(fourth);
        benchmark::DoNotOptimize(found);
    }
}

// The growth groups: the time of the whole for so many keys.

void readAll(benchmark::State& state) {
    const TestFolder folder;
    const OdAnsiString path(folder.path("keys.json"));
    const VoJson written(objectWith(keysFor(static_cast<std::size_t>(state.range(0)))));
    if (!written.write(path.str(), VoJson::kIndented, nullptr)) {
        state.SkipWithError("the document couldn't be written");
    }
    for ([[maybe_unused]] auto _ : state) {
        VoJson json;
        if (!json.read(path, -1, nullptr)) {
            state.SkipWithError("the document couldn't be read");
        }
    }
}

void buildAll(benchmark::State& state) {
    const auto keys = keysFor(static_cast<std::size_t>(state.range(0)));
    const std::vector<OdAnsiString> names(keys.begin(), keys.end());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(objectWith(names));
    }
}

void lookUpAll(benchmark::State& state, bool inOrder) {
    const auto keys = keysFor(static_cast<std::size_t>(state.range(0)));
    const VoJsonPtr object = objectWith(keys);
    const auto asked = inOrder ? std::vector<OdAnsiString>(keys.begin(), keys.end())
                               : questions<OdAnsiString>(keys);
    for ([[maybe_unused]] auto _ : state) {
        for (const OdAnsiString& key : asked) {
            benchmark::DoNotOptimize(object->getProperty(key));
        }
    }
}

void hashMapAll(benchmark::State& state) {
    const auto keys = keysFor(static_cast<std::size_t>(state.range(0)));
    std::unordered_map<std::string, CountedPtr> members;
    for (const std::string& key : keys) {
        members.emplace(key, new Counted(1));
    }
    const auto asked = questions<std::string>(keys);
    for ([[maybe_unused]] auto _ : state) {
        for (const std::string& key : asked) {
            benchmark::DoNotOptimize(CountedPtr(members.find(key)->second));
        }
    }
}

// The allocator as the application sets it up.
[[maybe_unused]] const bool isPoolSet = [] {
    set_mempool_proc(alloc_thin_object, realloc_thin_object, free_thin_object);
    return true;
}();

}  // namespace

BENCHMARK_CAPTURE(lookUpMember, five, 5)->Name("lookup5/ours");
BENCHMARK(walkOfFive)->Name("lookup5/walk");
BENCHMARK_CAPTURE(lookUpMember, many, 5000)->Name("lookup5000/ours");
BENCHMARK_CAPTURE(hashMapOf, many, 5000)->Name("lookup5000/map");
BENCHMARK_CAPTURE(lookUpBesideThread, five, 5)->Name("lookup5_threads/ours");
BENCHMARK(walkOfFive)->Name("lookup5_threads/walk");
BENCHMARK_CAPTURE(lookUpBesideThread, many, 5000)->Name("lookup5000_threads/ours");
BENCHMARK_CAPTURE(hashMapOf, many, 5000)->Name("lookup5000_threads/map");
BENCHMARK(pathOfFour)->Name("path4/ours");
BENCHMARK(fourLookUps)->Name("path4/lookups");
BENCHMARK(readAll)->Name("growthreading")->RangeMultiplier(10)->Range(10, 100'000);
BENCHMARK(buildAll)->Name("growthbuilding")->RangeMultiplier(10)->Range(10, 100'000);
BENCHMARK_CAPTURE(lookUpAll, ordered, true)
    ->Name("growthlookup")
    ->RangeMultiplier(10)
    ->Range(10, 100'000);
BENCHMARK_CAPTURE(lookUpAll, random, false)
    ->Name("growthrandom")
    ->RangeMultiplier(10)
    ->Range(10, 100'000);
BENCHMARK(hashMapAll)->Name("growthmap")->RangeMultiplier(10)->Range(10, 100'000);
