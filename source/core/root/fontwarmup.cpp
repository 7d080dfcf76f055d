#include "fontwarmup.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <exception>
#include <thread>
#include <vector>

#include "bigendian.h"

namespace vosi {

namespace {

constexpr std::size_t kThreadCount = 8;
constexpr std::size_t kSampleCount = 8;
constexpr std::size_t kMostFaces = 64;

class File {
  public:
    explicit File(const OdAnsiString& path)
        : descriptor(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }

    // Whether reading the first byte would have to wait for the disk.
    bool isCold() const {
        char byte = 0;
        const iovec target{&byte, 1};
        return ::preadv2(descriptor, &target, 1, 0, RWF_NOWAIT) < 0 && errno == EAGAIN;
    }
    void expectNoOrder() const { ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_RANDOM); }

    template <std::size_t size>
    std::size_t read(std::array<std::uint8_t, size>& bytes, std::uint64_t offset) const {
        const ssize_t got = ::pread(descriptor, bytes.data(), size, static_cast<off_t>(offset));
        return got > 0 ? static_cast<std::size_t>(got) : 0;
    }

  private:
    int descriptor;
};

// The face's directory of tables, and the start of its table of names.
void warmFace(const File& file, std::uint64_t offset) {
    std::array<std::uint8_t, 1024> directory;
    const std::size_t size = file.read(directory, offset);
    for (std::size_t at = 12; at + 16 <= size; at += 16) {
        if (std::memcmp(&directory[at], "name", 4) == 0) {
            std::array<std::uint8_t, 2048> names;
            file.read(names, bigEndian32(&directory[at + 8]));
            return;
        }
    }
}

void warmFile(const OdAnsiString& path) {
    const File file(path);
    file.expectNoOrder();
    std::array<std::uint8_t, 12 + 4 * kMostFaces> start;
    const std::size_t size = file.read(start, 0);
    if (size < 12 || std::memcmp(start.data(), "ttcf", 4) != 0) {
        warmFace(file, 0);
        return;
    }
    const std::size_t faces = std::min<std::size_t>(bigEndian32(&start[8]), size / 4 - 3);
    for (std::size_t face = 0; face < faces; ++face) {
        warmFace(file, bigEndian32(&start[12 + 4 * face]));
    }
}

bool someAreCold(const Paths& files) {
    const std::size_t step = std::max<std::size_t>(files.size() / kSampleCount, 1);
    for (std::size_t index = 0; index < files.size(); index += step) {
        if (File(files[index]).isCold()) {
            return true;
        }
    }
    return false;
}

// As many as can be had.
template <class Work>
std::vector<std::thread> startThreads(Work& work) {
    std::vector<std::thread> threads;
    threads.reserve(kThreadCount);
    // Signals go on to be taken by the application's own threads.
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        while (threads.size() < kThreadCount) {
            threads.emplace_back([&work] { work(); });
        }
    } catch (const std::exception&) {
        // The scan will wait for the disk itself.
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return threads;
}

}  // namespace

bool warmUpFonts(const Paths& paths) {
    if (!someAreCold(paths)) {
        return false;
    }
    std::atomic<std::size_t> next = 0;
    auto work = [&] {
        for (std::size_t index = next++; index < paths.size(); index = next++) {
            warmFile(paths[index]);
        }
    };
    std::vector<std::thread> threads = startThreads(work);
    for (std::thread& thread : threads) {
        thread.join();
    }
    return !threads.empty();
}

}  // namespace vosi
