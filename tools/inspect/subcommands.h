// What vemo-inspect can do. Each takes the words behind its name, writes its answer to standard
// output and gives the exit status: 0, or 1 when a part could not be done. Raises UsageError for
// wrong use and Failure when nothing could be done.
#pragma once

#include <string>
#include <vector>

namespace inspect {

struct Subcommand {
    const char* name;
    const char* usage;  // what stands behind the name
    const char* help;   // one line
    int (*run)(const std::vector<std::string>& words);
};

int inspectFonts(const std::vector<std::string>& words);
int inspectMessages(const std::vector<std::string>& words);
int inspectLanguages(const std::vector<std::string>& words);
int inspectBoot(const std::vector<std::string>& words);
int inspectReport(const std::vector<std::string>& words);
int inspectFind(const std::vector<std::string>& words);
int inspectModules(const std::vector<std::string>& words);

}  // namespace inspect
