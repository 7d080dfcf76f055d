// The reference application's main program, which reports when its start was done and what its end
// took, and reads no command: startprobe DESCRIPTOR "flush" or "noflush" EXECUTABLE [ARGUMENT...].
// What stands behind it is vemocad's command line; the executable's folder is the one that the
// application runs in.
#include <sys/syscall.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <vector>

#include <core/vemo_root.h>

#include "appcallback.h"
#include "configfiles.h"
#include "startreport.h"

namespace {

bool flushes = true;

int flush(long call, int file) {
    return flushes ? static_cast<int>(syscall(call, file)) : 0;
}

}  // namespace

// These stand in front of the C library's: how long a disk takes says nothing of the library.
extern "C" __attribute__((visibility("default"))) int fsync(int file) {
    return flush(SYS_fsync, file);
}
extern "C" __attribute__((visibility("default"))) int fdatasync(int file) {
    return flush(SYS_fdatasync, file);
}

int main(int argc, char** argv) {
    if (argc < 4) {
        return EXIT_FAILURE;
    }
    // As vemocad does.
    std::setlocale(LC_ALL, "");
    std::setlocale(LC_NUMERIC, "C");
    std::signal(SIGPIPE, SIG_IGN);
    flushes = std::string_view(argv[2]) == "flush";

    std::vector<char*> arguments(argv + 3, argv + argc);
    vemoapp::AppCallback callback(vemoapp::configFilesOf(arguments));
    const int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    StartReport report;
    const int result = vemo_root(arguments.data(), count, &callback);
    report.started = monotonicNow();
    report.residentBytes = residentBytesNow();
    report.exitBegan = monotonicNow();
    vemo_exit(&callback);
    report.exited = monotonicNow();
    // The runs of small modules alone have no main window.
    const bool isUp = result == 0 || result == kVemoNoMainWindow;
    return isUp && sendReport(report, argv[1]) ? EXIT_SUCCESS : EXIT_FAILURE;
}
