// Would a file load as a module here? Answered by reading it and the libraries that it needs; none
// of their code runs.
#pragma once

#include <drawing/runtime.h>

#include <optional>
#include <string>
#include <vector>

namespace inspect {

/// What was found. A field stays as it is here when the file didn't give so much.
struct ModuleCheck {
    std::string path;
    /// Whether nothing stands against loading it, so that there are no reasons.
    bool ok = false;

    /// As `uname -m` has it; empty for a file that is no ELF file.
    std::string architecture;
    bool isOwnArchitecture = false;

    /// The version of the interfaces in its stamp. A module without a stamp is accepted.
    std::optional<OdRxInterfaceVersion> interfaceVersion;
    bool interfaceAccepted = false;

    /// The libraries that it or a library of it needs and that aren't found, or can't be loaded.
    std::vector<std::string> missingLibraries;
    /// What it or a library of it uses and nobody defines, neither its libraries nor the running
    /// program; C++ names as they are written in a source. Not looked for while a library is
    /// missing.
    std::vector<std::string> unresolvedSymbols;

    /// Whether it defines the module entry itself.
    bool hasEntry = false;

    /// What stands against loading it, in plain words, a line for each.
    std::vector<std::string> reasons;
};

/// Checks the file at a path; a name without a folder is one in the working folder. What the
/// running program has loaded counts as it does for the loader, so the answer is about a module for
/// this program. May be called on any thread, and while the runtime isn't up; raises nothing on
/// account of the file. What the module would do when it runs can't be told: a module that is in
/// order here may still fail in its own code.
ModuleCheck checkModule(const std::string& path);

}  // namespace inspect
