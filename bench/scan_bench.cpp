// The whole scan of 2,000 real fonts in one folder: with all of them in memory, and with their data
// out of it.
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>

#include "application.h"
#include "fontfiles.h"
#include "fontscan.h"
#include "fontwarmup.h"
#include "voapfontsservice.h"

namespace {

constexpr std::size_t kFontCount = 2000;
constexpr int kLevels = 5;

class Scene {
  public:
    static const Scene& get() {
        static const Scene scene;
        return scene;
    }

    const std::string& folder() const { return fonts; }
    /// Takes the fonts' data out of the system's cache; their folder entries stay.
    void dropData() const {
        for (const std::string& name : namesIn(fonts)) {
            const int file = open((fonts + '/' + name).c_str(), O_RDONLY | O_CLOEXEC);
            posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
            close(file);
        }
    }
    static std::vector<std::string> namesIn(const std::string& folder) {
        std::vector<std::string> names;
        DIR* stream = opendir(folder.c_str());
        if (!stream) {
            return names;
        }
        while (const dirent* entry = readdir(stream)) {
            const std::string_view name(entry->d_name);
            if (name.ends_with(".ttf") || name.ends_with(".ttc")) {
                names.emplace_back(name);
            }
        }
        closedir(stream);
        return names;
    }

  private:
    Scene() : fonts(application.folder().folder("share/fonts")) {
        showIn(fonts, systemFonts(kFontCount));
        sync();
    }

    BareApplication application;
    std::string fonts;
};

template <class Work>
void timeBetween(benchmark::State& state, Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(taken.count());
}

void scanFonts(benchmark::State& state) {
    Scene::get();
    for ([[maybe_unused]] auto _ : state) {
        const auto service = OdRxObjectImpl<vosi::VoApFontsService>::createObject();
        timeBetween(state, [&] { service->scanFonts(3); });
    }
}

void leastOfAll(benchmark::State& state) {
    const std::string& folder = Scene::get().folder();
    for ([[maybe_unused]] auto _ : state) {
        timeBetween(state, [&] {
            const int place = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            for (const std::string& name : Scene::namesIn(folder)) {
                benchmark::DoNotOptimize(readAtLeast(place, name.c_str()));
            }
            close(place);
        });
    }
}

template <bool warms>
void coldScan(benchmark::State& state) {
    const vosi::PathEntries folders{{OdUtf8StringToOdString(Scene::get().folder()), kLevels}};
    for ([[maybe_unused]] auto _ : state) {
        Scene::get().dropData();
        OdArray<OdTtfDescriptor> descriptors;
        std::vector<vosi::TtfFaceRecord> records;
        OdStringArray files;
        timeBetween(state, [&] {
            const vosi::FontFiles found = vosi::fontFilesBelow(folders);
            if (warms) {
                vosi::warmUpFonts(found.trueType);
            }
            vosi::scanTtfFiles(found.trueType, descriptors, records, files);
        });
        state.counters["faces"] = static_cast<double>(records.size());
    }
}

BENCHMARK(scanFonts)->Name("scan/ours")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(leastOfAll)->Name("scan/floor")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(coldScan<true>)->Name("coldScan/ours")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(coldScan<false>)->Name("coldScan/plain")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
