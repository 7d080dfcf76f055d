// One life of the library in this process, up and down, with what was seen of it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "arguments.h"
#include "runrecorder.h"

namespace inspect {

/// Where a run finds its folders, as absolute paths; what isn't given is the user's own.
struct BootFolders {
    /// Without one the run works on a copy of the user's file.
    std::optional<std::string> appData;
    std::optional<std::string> documents;
    std::optional<std::string> temp;
    std::optional<std::string> systemFonts;
    /// Otherwise "modules" beside the executable that ARGV0 names.
    std::optional<std::string> modules;
};

/// The options by which BootFolders are given; a subcommand adds its own.
OptionTable bootOptions();
/// Relative ones are below the working folder. Raises UsageError for an empty name.
BootFolders bootFolders(const Arguments& arguments);

/// Runs vemo_root and vemo_exit with the command line. What modules print goes to standard error.
/// `whenUp` is called between the two when vemo_root returned. A command line that asks for the
/// usage text prints it and ends the process, as it does in a real run.
RunRecord bootAndExit(const BootFolders& folders, const std::vector<std::string>& commandLine,
                      const std::function<void(RunRecorder&)>& whenUp = {});

}  // namespace inspect
