// Feeds files to a fuzz target where there is no libFuzzer. The arguments are files, or folders of
// them.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::set<std::filesystem::path> filesOf(const std::filesystem::path& place) {
    if (!std::filesystem::is_directory(place)) {
        return {place};
    }
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(place)) {
        if (entry.is_regular_file()) {
            files.insert(entry.path());
        }
    }
    return files;
}

// The bytes stand in a block of just their size, so that a sanitizer sees a read past them.
bool feed(const std::filesystem::path& path) {
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    const auto size = std::filesystem::file_size(path);
    const std::unique_ptr<std::uint8_t[]> data(new std::uint8_t[size]);
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(data.get()), static_cast<std::streamsize>(size))) {
        std::fprintf(stderr, "%s can't be read\n", path.c_str());
        return false;
    }
    LLVMFuzzerTestOneInput(data.get(), size);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t fed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& path : filesOf(argv[i])) {
            if (!feed(path)) {
                return 1;
            }
            ++fed;
        }
    }
    if (fed == 0) {
        std::fprintf(stderr, "There is nothing to feed.\n");
        return 1;
    }
    return 0;
}
