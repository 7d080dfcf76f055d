// What the started programs tell the one that measures, through the descriptor in their first
// argument. Times are of CLOCK_MONOTONIC, in nanoseconds.
#pragma once

#include <time.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <string>

struct StartReport {
    std::int64_t started =
        0;  // the application is up, or what is measured beside it has come to its end
    std::int64_t exitBegan = 0;  // 0 where nothing was taken down
    std::int64_t exited = 0;
    std::int64_t residentBytes = 0;  // when it was up
};

inline std::int64_t monotonicNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{1'000'000'000} * now.tv_sec + now.tv_nsec;
}

inline std::int64_t residentBytesNow() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return 1024 * std::stoll(line.substr(line.find(':') + 1));
        }
    }
    return 0;
}

inline bool sendReport(const StartReport& report, const char* descriptor) {
    return write(std::stoi(descriptor), &report, sizeof report) == sizeof report;
}
