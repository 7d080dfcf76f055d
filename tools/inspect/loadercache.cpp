#include "loadercache.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string_view>

namespace inspect {

namespace {

constexpr std::string_view kMagic = "glibc-ld.so.cache1.1";

struct CacheHeader {
    char magic[20];
    std::uint32_t entries;
    std::uint32_t stringsSize;
    std::uint32_t reserved[5];
};

// The places of both strings count from the header on.
struct CacheEntry {
    std::int32_t flags;
    std::uint32_t name;
    std::uint32_t file;
    std::uint32_t systemVersion;
    std::uint64_t capabilities;
};

std::string textAt(std::string_view cache, std::uint32_t place) {
    const std::string_view rest =
        cache.substr(std::min<std::size_t>(place, cache.size()), PATH_MAX);
    const std::size_t end = rest.find('\0');
    return std::string(rest.substr(0, end == rest.npos ? 0 : end));
}

}  // namespace

LoaderCache::LoaderCache(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    // An older table may stand in front.
    const std::size_t start = content.find(kMagic);
    if (start == content.npos || content.size() - start < sizeof(CacheHeader)) {
        return;
    }
    const std::string_view cache = std::string_view(content).substr(start);
    CacheHeader header;
    std::memcpy(&header, cache.data(), sizeof header);
    if (header.entries > (cache.size() - sizeof header) / sizeof(CacheEntry)) {
        return;
    }
    for (std::size_t i = 0; i < header.entries; ++i) {
        CacheEntry entry;
        std::memcpy(&entry, cache.data() + sizeof header + i * sizeof entry, sizeof entry);
        files[textAt(cache, entry.name)].push_back(textAt(cache, entry.file));
    }
}

const std::vector<std::string>& LoaderCache::filesOf(const std::string& name) const {
    static const std::vector<std::string> none;
    const auto found = files.find(name);
    return found == files.end() ? none : found->second;
}

}  // namespace inspect
