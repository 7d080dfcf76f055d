// Finding the font files of the system's folders.
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <strings.h>

#include <string>
#include <string_view>
#include <vector>

#include "fontscan.h"

namespace {

const char* const kFonts = "/usr/share/fonts";
constexpr int kLevels = 5;

bool isFontFile(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == name.npos) {
        return false;
    }
    const std::string extension(name.substr(dot));
    for (const char* known : {".shx", ".shp", ".ttc", ".ttf"}) {
        if (strcasecmp(extension.c_str(), known) == 0) {
            return true;
        }
    }
    return false;
}

void onePass(const std::string& folder, int levels, std::vector<std::string>& files) {
    DIR* stream = opendir(folder.c_str());
    if (!stream) {
        return;
    }
    while (const dirent* entry = readdir(stream)) {
        const std::string_view name(entry->d_name);
        if (name == "." || name == "..") {
            continue;
        }
        if (entry->d_type == DT_DIR && levels > 1) {
            onePass(folder + '/' + entry->d_name, levels - 1, files);
        } else if (entry->d_type == DT_REG && isFontFile(name)) {
            files.push_back(folder + '/' + entry->d_name);
        }
    }
    closedir(stream);
}

void readdirPass(benchmark::State& state) {
    std::size_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        std::vector<std::string> files;
        onePass(kFonts, kLevels, files);
        count = files.size();
    }
    state.counters["files"] = static_cast<double>(count);
}

void ours(benchmark::State& state) {
    const vosi::PathEntries folders{{OdUtf8StringToOdString(kFonts), kLevels}};
    std::size_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        count = vosi::fontFilesBelow(folders).trueType.size();
    }
    state.counters["files"] = static_cast<double>(count);
}

BENCHMARK(ours)->Name("walk/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(readdirPass)->Name("walk/readdir")->Unit(benchmark::kMicrosecond);

}  // namespace
