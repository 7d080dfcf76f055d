// Why a start failed, in one line.
#pragma once

#include <string>

namespace vemoapp {

/// The text for a result of vemo_root that isn't 0. For a missing main window it names the modules
/// that aren't loaded, each with the linker's reason. Only before vemo_exit.
std::string startFailure(int result);

}  // namespace vemoapp
