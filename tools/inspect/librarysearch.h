// Finds the libraries that a file needs, as the system's loader would and without loading any.
#pragma once

#include <drawing/runtime.h>

#include <optional>
#include <string>
#include <vector>

#include "loadercache.h"

namespace inspect {

/// A library, or whatever else needs libraries.
struct LibraryFile {
    std::string path;
    OdRxModuleFileInfo info;
    /// Who needs it first; null for the file that all began with. Not owned.
    const LibraryFile* neededBy = nullptr;
    /// Whether the process has it mapped.
    bool isMapped = false;
};

/// Looks where the loader does and in its order: among the libraries that the process has mapped;
/// in the folders that the needing file and those that need it name (RPATH), in those of
/// LD_LIBRARY_PATH, in those that the needing file alone names (RUNPATH); in the loader's cache and
/// in the default folders. $ORIGIN stands for the folder of the file that names it; folders with
/// other variables, and folders for special processors, are passed over.
class LibrarySearch {
  public:
    LibrarySearch();

    /// The library by its name in the needing file; none when it isn't found. One that is found and
    /// can't be read carries the fault.
    std::optional<LibraryFile> find(const std::string& name, const LibraryFile& neededBy) const;

    /// The running program's architecture; empty when the program can't be read.
    std::string architecture() const { return program.info.architecture.str(); }

  private:
    using Folders = std::vector<std::string>;

    Folders foldersFor(const LibraryFile& neededBy) const;

    LibraryFile program;
    LoaderCache cache;
    Folders environmentFolders;
    Folders defaultFolders;
};

}  // namespace inspect
