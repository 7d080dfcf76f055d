#include "fontfiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <map>

#include "bigendian.h"

namespace {

using Bytes = std::array<std::uint8_t, 4096>;

// Where the table of names stands, when the directory of tables is among the bytes.
bool findNames(const Bytes& bytes, std::size_t size, std::uint32_t& offset, std::uint32_t& length) {
    for (std::size_t at = 12; at + 16 <= size; at += 16) {
        if (std::memcmp(&bytes[at], "name", 4) == 0) {
            offset = bigEndian32(&bytes[at + 8]);
            length = bigEndian32(&bytes[at + 12]);
            return true;
        }
    }
    return false;
}

std::size_t readAt(int file, Bytes& bytes, std::size_t count, std::uint32_t offset) {
    const ssize_t got = pread(file, bytes.data(), count, offset);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

}  // namespace

std::vector<std::string> systemFonts(std::size_t count) {
    std::vector<std::string> fonts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator("/usr/share/fonts")) {
        const std::string extension = entry.path().extension();
        if (entry.is_regular_file() && !entry.is_symlink() &&
            (extension == ".ttf" || extension == ".ttc")) {
            fonts.push_back(entry.path());
        }
    }
    std::sort(fonts.begin(), fonts.end());
    fonts.resize(std::min(count, fonts.size()));
    return fonts;
}

void showIn(const std::string& folder, const std::vector<std::string>& files) {
    std::size_t number = 0;
    for (const std::string& file : files) {
        const std::filesystem::path path(file);
        const std::string name =
            path.stem().string() + '.' + std::to_string(number++) + path.extension().string();
        std::error_code error;
        std::filesystem::create_hard_link(path, folder + '/' + name, error);
        if (error) {
            std::filesystem::copy_file(path, folder + '/' + name);
        }
    }
}

std::size_t readAtLeast(int folder, const char* name) {
    constexpr std::size_t kStart = 512;
    const int file = openat(folder, name, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return 0;
    }
    Bytes bytes;
    std::size_t total = readAt(file, bytes, kStart, 0);
    if (total >= 16 && std::memcmp(bytes.data(), "ttcf", 4) == 0) {
        total += readAt(file, bytes, kStart, bigEndian32(&bytes[12]));
    }
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    if (findNames(bytes, std::min(total, kStart), offset, length)) {
        total += readAt(file, bytes, std::min<std::size_t>(length, bytes.size()), offset);
    }
    close(file);
    return total;
}

OpenFolders::OpenFolders(const std::vector<std::string>& paths) {
    std::map<std::string, int> known;
    for (const std::string& path : paths) {
        const std::filesystem::path split(path);
        const auto [folder, isNew] = known.emplace(split.parent_path(), -1);
        if (isNew) {
            folder->second = open(folder->first.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            folders.push_back(folder->second);
        }
        files.push_back({folder->second, split.filename()});
    }
}

OpenFolders::~OpenFolders() {
    for (const int folder : folders) {
        close(folder);
    }
}

std::size_t OpenFolders::readAllAtLeast() const {
    std::size_t total = 0;
    for (const File& file : files) {
        total += readAtLeast(file.folder, file.name.c_str());
    }
    return total;
}
