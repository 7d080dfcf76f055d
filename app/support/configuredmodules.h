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

/// What isn't loaded of the lists Core/OdaLibrary, Core/CoreLibrary and Core/Library, which come
/// before the main window. Only while the runtime is up, as the next.
std::vector<MissingModule> missingCoreModules();

/// What isn't loaded of the list User/Library, which comes after it.
std::vector<MissingModule> missingUserModules();

/// How many modules the lists before the main window name.
int configuredCoreModules();

}  // namespace vemoapp
