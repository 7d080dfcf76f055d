// The folders that the desktop gives to an application and its user. All are absolute UTF-8 paths
// without a closing separator; the environment is read anew at each call.
#pragma once

#include <string>

namespace vemoapp {

/// The user's home: $HOME, else what the system's user data say, else "/".
std::string homeFolder();

/// $XDG_CONFIG_HOME when it is absolute, else ".config" at home.
std::string configHome();

/// $TMPDIR when it is absolute, else "/tmp".
std::string tempFolder();

/// The user's documents: XDG_DOCUMENTS_DIR of "user-dirs.dirs" in the configuration home, else
/// "Documents" at home, else home; the first of them that is there.
std::string documentFolder();

}  // namespace vemoapp
