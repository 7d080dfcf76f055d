// The modules that the configuration names, against those that are loaded.
#pragma once

#include <string>
#include <vector>

namespace vemoapp {

/// A module that the configuration names and that isn't loaded.
struct MissingModule {
    std::string list;    // key path of the list that names it
    std::string file;    // the library's file name
    std::string reason;  // the linker's words, or that it was never tried
};

/// What isn't loaded of the lists Core/OdaLibrary, Core/CoreLibrary, Core/Library and User/Library.
/// Only while the runtime is up.
std::vector<MissingModule> missingModules();

/// How many modules the first wave's lists name.
int configuredModuleCount();

}  // namespace vemoapp
