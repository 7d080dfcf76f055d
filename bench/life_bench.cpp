// Start and end of the reference application: from the start of the process to the open drawing,
// and vemo_exit.
//
// Each run is a process of its own (startprobe.cpp), which reports its times. Beside it stands
// startfloor.cpp: a program linked to the same libraries that loads the same modules, and reads the
// same fonts. Fonts are files of the system's, the first of the sorted list, under second names in
// a folder of the user's; nothing else of the system's fonts is seen.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "application.h"
#include "fontfiles.h"
#include "startreport.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kFonts = 2000;

const fs::path& programs() {
    static const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
    return folder;
}

// Where vemocad stands, with its modules and drawings.
fs::path applicationFolder() {
    return programs().parent_path() / "bin";
}

// ---- runs ----

struct Run {
    bool done = false;
    double startSeconds = 0;
    double exitSeconds = 0;
    double residentBytes = 0;
};

Run runProgram(const std::string& program, const std::vector<std::string>& arguments) {
    Run run;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return run;
    }
    constexpr int kReports = 3;
    const std::string path = programs() / program;
    std::vector<std::string> texts = {path, std::to_string(kReports)};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], kReports);
    pid_t child = -1;
    StartReport report;
    const std::int64_t begin = monotonicNow();
    const int failure = posix_spawn(&child, path.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    run.done = failure == 0 && read(ends[0], &report, sizeof report) == sizeof report;
    close(ends[0]);
    int status = 0;
    run.done = failure == 0 && waitpid(child, &status, 0) == child && status == 0 && run.done;
    constexpr double kNanosecond = 1e-9;
    run.startSeconds = kNanosecond * static_cast<double>(report.started - begin);
    run.exitSeconds = kNanosecond * static_cast<double>(report.exited - report.exitBegan);
    run.residentBytes = static_cast<double>(report.residentBytes);
    return run;
}

// ---- places ----

int facesIn(const std::string& file) {
    std::array<unsigned char, 12> head{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(head.data()), head.size());
    return std::string_view(reinterpret_cast<const char*>(head.data()), 4) == "ttcf"
               ? head[8] << 24 | head[9] << 16 | head[10] << 8 | head[11]
               : 1;
}

// A user of the application, who has run it before and may have fonts.
class User {
  public:
    explicit User(const std::vector<std::string>& fonts) {
        showIn(home.folder("home/share/fonts"), fonts);
        for (const std::string& font : fonts) {
            faceCount += facesIn(font);
        }
        startApplication("noflush");
    }

    Run startApplication(const std::string& flush) const {
        liveIn(home);
        return runProgram("startprobe", {flush, applicationFolder() / "vemocad",
                                         applicationFolder() / "drawings/floorplan.dxf"});
    }
    std::string fontFolder() const { return home.path("home/share/fonts"); }
    int faces() const { return faceCount; }

  private:
    TestFolder home;
    int faceCount = 0;
};

const User& userWithoutFonts() {
    static const User user({});
    return user;
}

// Whose files are in memory, where the system has a place for such: a disk's file system puts a
// file that takes another's place on disk also when nobody asks for it.
const User& userWithoutDisk() {
    static const std::unique_ptr<const User> user = [] {
        const char* const place = "/dev/shm";
        if (access(place, W_OK) == 0) {
            setenv("TMPDIR", place, 1);
        }
        auto made = std::make_unique<const User>(std::vector<std::string>());
        unsetenv("TMPDIR");
        return made;
    }();
    return *user;
}

const User& userWithFonts() {
    static const User user(systemFonts(kFonts));
    return user;
}

// ---- start and end ----

// Runs the program again and again; what a run gives is the time of an iteration.
template <class RunOnce, class Time>
void timeRuns(benchmark::State& state, RunOnce&& runOnce, Time&& timeOf) {
    for ([[maybe_unused]] auto _ : state) {
        const Run run = runOnce();
        if (!run.done) {
            state.SkipWithError("the program didn't come up");
            return;
        }
        state.SetIterationTime(timeOf(run));
    }
}

double startOf(const Run& run) {
    return run.startSeconds;
}

double exitOf(const Run& run) {
    return run.exitSeconds;
}

void start(benchmark::State& state, const User& (*user)(), const char* flush,
           double (*timeOf)(const Run&)) {
    timeRuns(
        state, [&] { return user().startApplication(flush); }, timeOf);
    state.counters["faces"] = user().faces();
}

void floorOfStart(benchmark::State& state, bool withFonts) {
    std::vector<std::string> arguments = {withFonts ? userWithFonts().fontFolder() : std::string()};
    for (const auto& module : fs::directory_iterator(applicationFolder() / "modules")) {
        arguments.push_back(module.path());
    }
    timeRuns(
        state, [&] { return runProgram("startfloor", arguments); }, startOf);
}

void fontMemory(benchmark::State& state) {
    double bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        const Run with = userWithFonts().startApplication("noflush");
        const Run without = userWithoutFonts().startApplication("noflush");
        if (!with.done || !without.done) {
            state.SkipWithError("the program didn't come up");
            return;
        }
        bytes += with.residentBytes - without.residentBytes;
    }
    const double runs = static_cast<double>(state.iterations());
    state.counters["KiB"] = bytes / runs / 1024 / userWithFonts().faces();
    state.counters["faces"] = userWithFonts().faces();
}

// ---- modules in numbers ----

// An application of so many small modules, which therefore ends before a main window.
class SmallModules {
  public:
    explicit SmallModules(std::int64_t count) {
        std::string names;
        for (std::int64_t made = 0; made < count; ++made) {
            const std::string name = "small" + std::to_string(made);
            folder.folder("bin/modules");
            fs::copy_file(programs() / "libsmallmodule.so",
                          folder.path("bin/modules/lib" + name + ".so"));
            names += (made > 0 ? ", \"" : "\"") + name + '"';
        }
        folder.file(
            "bin/vemo.json",
            R"({"Core": {"OdaLibrary": [], "CoreLibrary": [], "Library": [)" + names + "]}}");
    }

    Run startApplication() const {
        liveIn(folder);
        return runProgram("startprobe", {"noflush", folder.path("bin/vemocad")});
    }

  private:
    TestFolder folder;
};

void startModules(benchmark::State& state) {
    const SmallModules application(state.range(0));
    timeRuns(
        state, [&] { return application.startApplication(); }, startOf);
}

}  // namespace

BENCHMARK_CAPTURE(start, ours, userWithoutFonts, "noflush", startOf)
    ->Name("start/ours")
    ->UseManualTime();
BENCHMARK_CAPTURE(floorOfStart, floor, false)->Name("start/floor")->UseManualTime();
BENCHMARK_CAPTURE(start, ours, userWithFonts, "noflush", startOf)
    ->Name("start_fonts/ours")
    ->UseManualTime();
BENCHMARK_CAPTURE(floorOfStart, floor, true)->Name("start_fonts/floor")->UseManualTime();
BENCHMARK_CAPTURE(start, ours, userWithoutDisk, "noflush", exitOf)
    ->Name("exit/ours")
    ->UseManualTime();
BENCHMARK_CAPTURE(start, start, userWithoutDisk, "noflush", startOf)
    ->Name("exit/start")
    ->UseManualTime();
BENCHMARK_CAPTURE(start, ours, userWithoutFonts, "flush", exitOf)
    ->Name("exit_flushed/ours")
    ->UseManualTime();
BENCHMARK_CAPTURE(start, unflushed, userWithoutDisk, "noflush", exitOf)
    ->Name("exit_flushed/unflushed")
    ->UseManualTime();
BENCHMARK(fontMemory)->Name("font_memory/ours")->UseRealTime();
BENCHMARK(startModules)->Name("start_modules")->Arg(1)->Arg(10)->Arg(100)->UseManualTime();
