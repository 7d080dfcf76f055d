// Fonts brought into the system's file cache.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include "fontwarmup.h"
#include "support/sfntbuilder.h"
#include "support/testfolder.h"

namespace {

constexpr std::size_t kNamesAt = 3 << 20;

// Whether the byte can be read without waiting for the disk; nothing where the system can't tell.
std::optional<bool> isInCache(const std::string& path, std::size_t offset) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    char byte = 0;
    const iovec target{&byte, 1};
    const ssize_t got = preadv2(file, &target, 1, static_cast<off_t>(offset), RWF_NOWAIT);
    const int error = errno;
    close(file);
    return got == 1 || error == EAGAIN ? std::optional(got == 1) : std::nullopt;
}

void dropFromCache(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    fsync(file);
    posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    close(file);
}

std::string faceWithFarNames() {
    const fontfile::Face face{.names = {fontfile::family("Arrow")}};
    std::string bytes = fontfile::directory(face, kNamesAt);
    bytes.resize(kNamesAt);
    return bytes + fontfile::nameTable(face.names);
}

class FontWarmUp : public testing::Test {
  protected:
    void add(const std::string& name, const std::string& bytes) {
        paths.emplace_back(folder.file(name, bytes));
        dropFromCache(paths.back().str());
    }

    TestFolder folder;
    std::vector<OdAnsiString> paths;
};

TEST_F(FontWarmUp, BringsWhatAScanReadsAndNoMore) {
    add("far.ttf", faceWithFarNames());
    const std::string path = paths.front().str();
    if (isInCache(path, 0) != false) {
        GTEST_SKIP() << "the file system keeps everything in memory, or doesn't tell";
    }
    EXPECT_TRUE(vosi::warmUpFonts(paths));
    EXPECT_EQ(isInCache(path, 0), true);
    EXPECT_EQ(isInCache(path, kNamesAt), true);
    EXPECT_EQ(isInCache(path, kNamesAt / 2), false);
    EXPECT_FALSE(vosi::warmUpFonts(paths)) << "all is there";
}

TEST_F(FontWarmUp, PassesOverWhatIsNoFont) {
    EXPECT_FALSE(vosi::warmUpFonts(paths));
    add("empty.ttf", "");
    add("short.ttf", "ttcf");
    add("count.ttc", "ttcf" + fontfile::bytes32(0x00010000) + fontfile::bytes32(0xFFFFFFFF));
    add("places.ttc",
        "ttcf" + fontfile::bytes32(0x00010000) + fontfile::bytes32(3) + std::string(12, '\xFF'));
    add("names.ttf", fontfile::directory({}, 0xFFFFFFF0));
    paths.emplace_back(folder.path("missing.ttf"));
    paths.emplace_back(folder.folder("folder.ttf"));
    vosi::warmUpFonts(paths);
    for (int index = 0; index < 300; ++index) {
        add(std::to_string(index) + ".ttf", fontfile::sfnt({.names = {fontfile::family("A")}}));
    }
    vosi::warmUpFonts(paths);
    EXPECT_FALSE(vosi::warmUpFonts(paths)) << "what can be there is there";
}

}  // namespace
