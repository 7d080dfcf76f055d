// Looking fonts up: by the name of their file and by the description of a face, in indexes of made
// fonts, each with a family of its own.
#include <benchmark/benchmark.h>
#include <utils/paths.h>

#include <cwctype>
#include <filesystem>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "application.h"
#include "support/sfntbuilder.h"
#include "voapfontsservice.h"

namespace {

using Service = OdSmartPtr<vosi::VoApFontsService>;
constexpr int kTrueType = OdDbBaseHostAppServices::kTrueTypeFontFile;

std::string fileName(int number) {
    return "drafting-font-" + std::to_string(number) + ".ttf";
}
std::string family(int number) {
    return "Drafting Family " + std::to_string(number);
}

/// The application, with services that have each scanned so many fonts.
class Fonts {
  public:
    static Fonts& get() {
        static Fonts fonts;
        return fonts;
    }

    Service service(int count) {
        Service& service = services[count];
        if (service.isNull()) {
            makeFonts(count);
            setenv("XDG_DATA_DIRS", folderOf(count).c_str(), 1);
            service = OdRxObjectImpl<vosi::VoApFontsService>::createObject();
            service->scanFonts(vosi::kScanSystemFolders);
        }
        return service;
    }
    std::vector<OdString> paths(int count) const {
        std::vector<OdString> result;
        for (int number = 0; number < count; ++number) {
            result.push_back(
                OdUtf8StringToOdString(folderOf(count) + "/fonts/" + fileName(number)));
        }
        return result;
    }
    void makeFonts(int count) const {
        for (int number = 0; number < count; ++number) {
            application.folder().file(
                "fonts" + std::to_string(count) + "/fonts/" + fileName(number),
                fontfile::sfnt({.names = {fontfile::family(family(number))}}));
        }
    }
    std::string folderOf(int count) const {
        return application.folder().path("fonts" + std::to_string(count));
    }

  private:
    // A bare name is looked for in the working folder first, which holds nothing here.
    Fonts() { std::filesystem::current_path(application.folder().folder("work")); }

    BareApplication application;
    std::map<int, Service> services;
};

/// Goes through the numbers of fonts in no order that a cache could guess.
class Numbers {
  public:
    explicit Numbers(int fontCount) : count(fontCount) {}
    int next() { return current = (current + 7919) % count; }

  private:
    int count;
    int current = 0;
};

std::vector<OdString> fileNames(int count) {
    std::vector<OdString> names;
    for (int number = 0; number < count; ++number) {
        names.push_back(OdUtf8StringToOdString(fileName(number)));
    }
    return names;
}

std::vector<OdTtfDescriptor> descriptions(int count, const char* suffix) {
    std::vector<OdTtfDescriptor> wanted(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number) {
        wanted[static_cast<std::size_t>(number)].typeface =
            OdUtf8StringToOdString(family(number) + suffix);
    }
    return wanted;
}

// ---- by file name ----

void findIndexed(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const Service service = Fonts::get().service(count);
    const auto names = fileNames(count);
    Numbers numbers(count);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(service->findIndexedFont(
            names[static_cast<std::size_t>(numbers.next())], nullptr, kTrueType));
    }
}

void findFile(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const Service service = Fonts::get().service(count);
    const auto names = fileNames(count);
    Numbers numbers(count);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(
            service->findFile(names[static_cast<std::size_t>(numbers.next())], nullptr, kTrueType));
    }
}

void findIndexedAndAsFile(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const Service service = Fonts::get().service(count);
    const auto names = fileNames(count);
    Numbers numbers(count);
    for ([[maybe_unused]] auto _ : state) {
        const OdString& name = names[static_cast<std::size_t>(numbers.next())];
        OdString found;
        benchmark::DoNotOptimize(voutIsExistFileNoCaseSensitiveW(name, found));
        benchmark::DoNotOptimize(service->findIndexedFont(name, nullptr, kTrueType));
    }
}

std::wstring folded(const OdString& name) {
    std::wstring text(name.view());
    for (wchar_t& character : text) {
        character = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
    }
    return text;
}

void hashMapOfNames(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const auto names = fileNames(count);
    const auto paths = Fonts::get().paths(count);
    std::unordered_map<std::wstring, OdString> pathOf;
    for (std::size_t number = 0; number < names.size(); ++number) {
        pathOf.emplace(folded(names[number]), paths[number]);
    }
    Numbers numbers(count);
    for ([[maybe_unused]] auto _ : state) {
        const auto found = pathOf.find(folded(names[static_cast<std::size_t>(numbers.next())]));
        benchmark::DoNotOptimize(found == pathOf.end() ? OdString() : found->second);
    }
}

// ---- by description ----

template <const auto& suffix>
void matchFace(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const Service service = Fonts::get().service(count);
    const auto wanted = descriptions(count, suffix);
    Numbers numbers(count);
    OdString found;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(service->ttfFileNameByDescriptor(
            wanted[static_cast<std::size_t>(numbers.next())], found));
    }
}

template <const auto& suffix>
void mapOfFamilies(benchmark::State& state) {
    struct Face {
        bool bold;
        bool italic;
        OdString path;
    };
    const int count = static_cast<int>(state.range(0));
    const auto paths = Fonts::get().paths(count);
    const auto wanted = descriptions(count, suffix);
    std::unordered_map<std::wstring, std::vector<Face>> facesOf;
    for (int number = 0; number < count; ++number) {
        facesOf[std::wstring(OdUtf8StringToOdString(family(number)).view())].push_back(
            {false, false, paths[static_cast<std::size_t>(number)]});
    }
    Numbers numbers(count);
    OdString path;
    for ([[maybe_unused]] auto _ : state) {
        const OdTtfDescriptor& key = wanted[static_cast<std::size_t>(numbers.next())];
        const auto family = facesOf.find(std::wstring(key.typeface.view()));
        if (family == facesOf.end()) {
            continue;
        }
        for (const Face& face : family->second) {
            if (face.bold == key.isBold() && face.italic == key.isItalic()) {
                path = face.path;
                break;
            }
        }
        benchmark::DoNotOptimize(path);
    }
}

constexpr char kHit[] = "";
constexpr char kMiss[] = " of nobody";

// ---- as a node of the tree ----

void readTtf(benchmark::State& state) {
    const Service service = Fonts::get().service(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(service->getProperty("ttf"));
    }
}

void scan(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    Fonts::get().service(count);
    setenv("XDG_DATA_DIRS", Fonts::get().folderOf(count).c_str(), 1);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto service = OdRxObjectImpl<vosi::VoApFontsService>::createObject();
        state.ResumeTiming();
        service->scanFonts(vosi::kScanSystemFolders);
        state.PauseTiming();
        service = nullptr;
        state.ResumeTiming();
    }
}

void registerSized(const char* group, void (*function)(benchmark::State&),
                   benchmark::TimeUnit unit) {
    for (const int count : {100, 1000, 10000}) {
        benchmark::RegisterBenchmark((group + ("/" + std::to_string(count))).c_str(), function)
            ->Arg(count)
            ->Unit(unit);
    }
}

const bool registered = [] {
    registerSized("scanGrowth", scan, benchmark::kMicrosecond);
    registerSized("ttf", readTtf, benchmark::kMicrosecond);
    registerSized("findIndexedGrowth", findIndexed, benchmark::kNanosecond);
    registerSized("matchGrowth", matchFace<kHit>, benchmark::kNanosecond);
    return true;
}();

BENCHMARK(findIndexed)->Name("findIndexed10000/ours")->Arg(10000);
BENCHMARK(hashMapOfNames)->Name("findIndexed10000/map")->Arg(10000);
BENCHMARK(findIndexed)->Name("findIndexed1000/ours")->Arg(1000);
BENCHMARK(hashMapOfNames)->Name("findIndexed1000/map")->Arg(1000);
BENCHMARK(findFile)->Name("findFile/ours")->Arg(10000);
BENCHMARK(findIndexedAndAsFile)->Name("findFile/parts")->Arg(10000);
BENCHMARK(matchFace<kHit>)->Name("matchHit/ours")->Arg(10000);
BENCHMARK(mapOfFamilies<kHit>)->Name("matchHit/map")->Arg(10000);
BENCHMARK(matchFace<kMiss>)->Name("matchMiss/ours")->Arg(10000);
BENCHMARK(mapOfFamilies<kMiss>)->Name("matchMiss/map")->Arg(10000);

}  // namespace
