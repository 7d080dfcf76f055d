// The log's one state is process-wide and never destroyed: destructors of static objects, and
// modules that are released last of all, may still have something to say.
#include "global/log.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <mutex>
#include <string>
#include <string_view>

#include "logfile.h"

namespace {

constexpr int kLowestLevel = 1;
constexpr int kHighestLevel = 5;

std::atomic<int> threshold{4};
std::atomic<void (*)(const VoLogLine&)> logListener{nullptr};

struct Output {
    std::mutex mutex;
    LogFile file;
    bool toFile = false;
};

Output& output() {
    static Output& only = *new Output;
    return only;
}

/// "2024-11-21T03:30:15.123+0100", by the local clock.
std::string timeText() {
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    std::tm local{};
    ::localtime_r(&now.tv_sec, &local);
    std::array<char, 32> seconds{};
    std::array<char, 8> zone{};
    std::strftime(seconds.data(), seconds.size(), "%Y-%m-%dT%H:%M:%S", &local);
    std::strftime(zone.data(), zone.size(), "%z", &local);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s.%03ld%s", seconds.data(), now.tv_nsec / 1'000'000,
                  zone.data());
    return text.data();
}

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.find_last_of('/') + 1);
}

/// Appends the text without what would break the line or steer the terminal that shows it.
void appendPrintable(std::string& line, const char* text) {
    for (; text && *text; ++text) {
        const auto byte = static_cast<unsigned char>(*text);
        if (byte == '\n') {
            line += "\\n";
        } else if (byte == '\r') {
            line += "\\r";
        } else if ((byte < 0x20 && byte != '\t') || byte == 0x7f) {
            std::array<char, 8> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "\\x%02x", unsigned{byte});
            line += escaped.data();
        } else {
            line += *text;
        }
    }
}

std::string formLine(int level, int sourceLine, const char* file, const char* function,
                     const char* text) {
    std::string line = timeText() + ' ' + std::to_string(level) + ' ';
    line += lastComponent(file ? file : "-");
    line += ':' + std::to_string(sourceLine) + ' ';
    line += function ? function : "-";
    line += ' ';
    appendPrintable(line, text);
    line += '\n';
    return line;
}

}  // namespace

int vemo_log_level() {
    return threshold.load(std::memory_order_relaxed);
}

void vo_set_print_log_level(int level) {
    threshold.store(std::clamp(level, kLowestLevel, kHighestLevel), std::memory_order_relaxed);
}

void vo_Log(int level, int line, const char* file, const char* function, const char* text) {
    if (auto* const listener = logListener.load()) {
        listener({level, line, file, function, text});
    }
    const std::string formed = formLine(level, line, file, function, text);
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    // A log that can't be written has nowhere to report that.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, formed.data(), formed.size());
    if (out.toFile) {
        out.file.append(formed);
    }
}

void vo_set_print_log_to_file(bool on) {
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    out.toFile = on;
    if (!on) {
        out.file.close();
    }
}

void vo_set_Log_file(const OdAnsiString& path) {
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    out.file.setPath(path.str());
}

void vo_set_log_listener(void (*listener)(const VoLogLine&)) {
    logListener.store(listener);
}
