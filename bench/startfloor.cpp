// The least that a start of the reference application could do: a program linked to the same
// libraries, whose main function loads the same modules; and, when a folder of fonts is named,
// reads of each file there what tells its faces: startfloor DESCRIPTOR FONTS-OR-EMPTY MODULE...
#include <dirent.h>
#include <dlfcn.h>

#include <cstdlib>

#include "fontfiles.h"
#include "startreport.h"

namespace {

bool scan(const char* folder) {
    DIR* const stream = opendir(folder);
    if (!stream) {
        return false;
    }
    while (const dirent* entry = readdir(stream)) {
        if (entry->d_type == DT_REG) {
            readAtLeast(dirfd(stream), entry->d_name);
        }
    }
    closedir(stream);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        return EXIT_FAILURE;
    }
    for (int module = 3; module < argc; ++module) {
        if (!dlopen(argv[module], RTLD_NOW | RTLD_LOCAL)) {
            return EXIT_FAILURE;
        }
    }
    if (*argv[2] != '\0' && !scan(argv[2])) {
        return EXIT_FAILURE;
    }
    StartReport report;
    report.started = monotonicNow();
    return sendReport(report, argv[1]) ? EXIT_SUCCESS : EXIT_FAILURE;
}
