#include "faults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <mempool/mempool.h>
#include <pthread.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

using faults::Call;

std::atomic<bool> armed{false};
Call armedCall = Call::kAllocation;
long failing = 0;
std::atomic<long> count{0};
std::atomic<bool> hit{false};
// No std::string: the allocator itself comes by here.
std::array<char, 4096> hitFile{};
const char* redirectedFrom = nullptr;
const char* redirectedTo = nullptr;

bool fails(Call call, const char* file = "") {
    if (!armed || call != armedCall) {
        return false;
    }
    const long number = ++count;
    const bool again = call == Call::kDiskFull ? failing != 0 && number > failing
                                               : call == Call::kModuleLoad && hit &&
                                                     hitFile.data() == std::string_view(file);
    if (number == failing) {
        std::snprintf(hitFile.data(), hitFile.size(), "%s", file);
        hit = true;
        return true;
    }
    return again;
}

// For the calls that have a descriptor and no name.
bool failsOn(Call call, int descriptor) {
    if (!armed || call != armedCall) {
        return false;
    }
    std::array<char, 64> link{};
    std::array<char, 4096> file{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
    [[maybe_unused]] const ssize_t length = ::readlink(link.data(), file.data(), file.size() - 1);
    return fails(call, file.data());
}

int failWith(int error) {
    errno = error;
    return -1;
}

template <class Function>
Function real(Function, const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int openReal(int folder, const char* path, int flags, mode_t mode) {
    if (fails(Call::kOpen, path)) {
        return failWith(EMFILE);
    }
    static const auto open = real(&::openat, "openat");
    const bool other = redirectedFrom && std::strcmp(path, redirectedFrom) == 0;
    return open(folder, other ? redirectedTo : path, flags, mode);
}

std::FILE* openStream(const char* path, const char* mode) {
    if (fails(Call::kOpen, path)) {
        errno = EMFILE;
        return nullptr;
    }
    static const auto open = real(&::fopen, "fopen");
    return open(path, mode);
}

mode_t modeIn(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

}  // namespace

namespace faults {

const char* nameOf(Call call) {
    constexpr const char* names[] = {"Allocation", "Open",       "Read",      "ShortRead",
                                     "Write",      "ShortWrite", "DiskFull",  "Flush",
                                     "Rename",     "Thread",     "ModuleLoad"};
    return names[static_cast<int>(call)];
}

void arm(Call call, long number) {
    armedCall = call;
    failing = number;
    count = 0;
    hit = false;
    hitFile.front() = '\0';
    armed = true;
}

long disarm() {
    armed = false;
    return count;
}

bool struck() {
    return hit;
}

std::string victim() {
    return hitFile.data();
}

void redirect(const char* from, const char* to) {
    redirectedFrom = from;
    redirectedTo = to;
}

}  // namespace faults

// ---- the functions that stand in front ----

// The libraries bind to them only where they see them.
#pragma GCC visibility push(default)

void* operator new(std::size_t size) {
    void* block = fails(Call::kAllocation) ? nullptr : std::malloc(size > 0 ? size : 1);
    if (!block) {
        throw std::bad_alloc();
    }
    return block;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}

void* alloc_thin_object(std::size_t size) {
    return fails(Call::kAllocation) ? nullptr : std::malloc(size);
}
void* realloc_thin_object(void* block, std::size_t newSize, std::size_t) {
    return fails(Call::kAllocation) ? nullptr : std::realloc(block, newSize > 0 ? newSize : 1);
}
void free_thin_object(void* block) {
    std::free(block);
}

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return openReal(AT_FDCWD, path, flags, mode);
}
int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return openReal(AT_FDCWD, path, flags, mode);
}
int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeIn(flags, arguments);
    va_end(arguments);
    return openReal(folder, path, flags, mode);
}
std::FILE* fopen(const char* path, const char* mode) {
    return openStream(path, mode);
}
std::FILE* fopen64(const char* path, const char* mode) {
    return openStream(path, mode);
}

ssize_t read(int file, void* bytes, std::size_t size) {
    static const auto next = real(&::read, "read");
    if (failsOn(Call::kRead, file)) {
        return failWith(EIO);
    }
    return next(file, bytes, size > 1 && failsOn(Call::kShortRead, file) ? 1 : size);
}
ssize_t pread(int file, void* bytes, std::size_t size, off_t position) {
    static const auto next = real(&::pread, "pread");
    if (failsOn(Call::kRead, file)) {
        return failWith(EIO);
    }
    return next(file, bytes, size > 1 && failsOn(Call::kShortRead, file) ? 1 : size, position);
}
ssize_t write(int file, const void* bytes, std::size_t size) {
    static const auto next = real(&::write, "write");
    if (failsOn(Call::kWrite, file)) {
        return failWith(EIO);
    }
    if (failsOn(Call::kDiskFull, file)) {
        return failWith(ENOSPC);
    }
    return next(file, bytes, size > 1 && failsOn(Call::kShortWrite, file) ? 1 : size);
}
int fsync(int file) {
    static const auto next = real(&::fsync, "fsync");
    return failsOn(Call::kFlush, file) ? failWith(EIO) : next(file);
}
int rename(const char* from, const char* to) {
    static const auto next = real(&std::rename, "rename");
    return fails(Call::kRename, to) ? failWith(EIO) : next(from, to);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*),
                   void* data) {
    static const auto next = real(&::pthread_create, "pthread_create");
    return fails(Call::kThread) ? EAGAIN : next(thread, attributes, routine, data);
}

void* dlopen(const char* file, int flags) {
    static const auto next = real(&::dlopen, "dlopen");
    const bool asksOnly = (flags & RTLD_NOLOAD) != 0;
    return !asksOnly && fails(Call::kModuleLoad, file ? file : "") ? nullptr : next(file, flags);
}

}  // extern "C"

#pragma GCC visibility pop
