// vemo-inspect report
#include <ctime>
#include <iostream>

#include "bootrun.h"
#include "reportpage.h"
#include "subcommands.h"

namespace inspect {

namespace {

std::string nowInWords() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    char text[64] = "";
    gmtime_r(&now, &parts);
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M UTC", &parts);
    return text;
}

}  // namespace

int inspectReport(const std::vector<std::string>& words) {
    OptionTable options = bootOptions();
    options.flags.erase("--json");
    const Arguments arguments(words, options);
    if (!arguments.operands().empty()) {
        throw UsageError("report takes its command line behind --.");
    }
    const RunRecord run = bootAndExit(bootFolders(arguments), arguments.behindDashes());
    std::cout << reportPage(run, nowInWords()) << std::flush;
    if (!run.error.empty()) {
        throw Failure(run.error);
    }
    return 0;
}

}  // namespace inspect
