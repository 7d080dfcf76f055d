// Reading the names and styles of the faces of 2,000 font files that are in memory already: ours,
// the least that any reader can do, and two libraries that every desktop has.
#include <benchmark/benchmark.h>
#include <fontconfig/fontconfig.h>
// Leans on the one above.
#include <fontconfig/fcfreetype.h>
#include <ft2build.h>

#include "fontfiles.h"
#include "runtime.h"
#include "voapfontsread.h"
#include FT_FREETYPE_H
#include FT_SFNT_NAMES_H

namespace {

constexpr std::size_t kFontCount = 2000;

const std::vector<std::string>& fonts() {
    static const std::vector<std::string> paths = systemFonts(kFontCount);
    return paths;
}

void report(benchmark::State& state, std::size_t faces) {
    state.counters["files"] = static_cast<double>(fonts().size());
    state.counters["faces"] = static_cast<double>(faces);
}

void ours(benchmark::State& state) {
    const Runtime runtime;
    std::vector<OdString> paths;
    for (const std::string& font : fonts()) {
        paths.push_back(OdUtf8StringToOdString(font));
    }
    std::size_t faces = 0;
    for ([[maybe_unused]] auto _ : state) {
        std::vector<vosi::TtfFaceRecord> records;
        for (const OdString& path : paths) {
            vosi::readTtfDescriptors(path, records);
        }
        faces = records.size();
    }
    report(state, faces);
}

void floorOfReading(benchmark::State& state) {
    const OpenFolders folders(fonts());
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(folders.readAllAtLeast());
    }
}

// The names of one face as bytes, not decoded.
std::size_t sizeOfNames(FT_Face face) {
    std::size_t size = 0;
    for (FT_UInt index = 0; index < FT_Get_Sfnt_Name_Count(face); ++index) {
        FT_SfntName name;
        if (FT_Get_Sfnt_Name(face, index, &name) == 0 && (name.name_id == 1 || name.name_id == 2)) {
            size += name.string_len;
        }
    }
    return size;
}

void freeType(benchmark::State& state) {
    FT_Library library = nullptr;
    FT_Init_FreeType(&library);
    std::size_t faces = 0;
    for ([[maybe_unused]] auto _ : state) {
        faces = 0;
        for (const std::string& font : fonts()) {
            FT_Long count = 1;
            for (FT_Long index = 0; index < count; ++index) {
                FT_Face face = nullptr;
                if (FT_New_Face(library, font.c_str(), index, &face) != 0) {
                    break;
                }
                count = face->num_faces;
                benchmark::DoNotOptimize(sizeOfNames(face));
                FT_Done_Face(face);
                ++faces;
            }
        }
    }
    FT_Done_FreeType(library);
    report(state, faces);
}

void fontconfig(benchmark::State& state) {
    std::size_t faces = 0;
    for ([[maybe_unused]] auto _ : state) {
        faces = 0;
        for (const std::string& font : fonts()) {
            FcFontSet* set = FcFontSetCreate();
            int count = 0;
            FcFreeTypeQueryAll(reinterpret_cast<const FcChar8*>(font.c_str()),
                               static_cast<unsigned>(-1), nullptr, &count, set);
            faces += static_cast<std::size_t>(set->nfont);
            FcFontSetDestroy(set);
        }
    }
    report(state, faces);
}

BENCHMARK(ours)->Name("faces/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(floorOfReading)->Name("faces/floor")->Unit(benchmark::kMillisecond);
BENCHMARK(freeType)->Name("faces/freetype")->Unit(benchmark::kMillisecond);
BENCHMARK(fontconfig)->Name("faces/fontconfig")->Unit(benchmark::kMillisecond);

}  // namespace
