// A folder for the time of a run.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "arguments.h"

namespace inspect {

class ScratchFolder {
  public:
    ScratchFolder() {
        folder = (std::filesystem::temp_directory_path() / "vemo-inspect-XXXXXX").string();
        if (!mkdtemp(folder.data())) {
            throw Failure("There is no room for a temporary folder.");
        }
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return folder; }

  private:
    std::string folder;
};

}  // namespace inspect
