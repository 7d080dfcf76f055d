// Which configuration files a command line asks for.
#pragma once

#include <string>
#include <vector>

namespace vemoapp {

/// The two files by the names that the command line gives them; empty where it gives none.
struct ConfigFiles {
    std::string system;
    std::string user;
};

/// Reads -c and -u in all their forms. The library parses the same line for itself, and neither its
/// order nor the library's own reading is disturbed. Not thread-safe.
ConfigFiles configFilesOf(const std::vector<char*>& arguments);

}  // namespace vemoapp
