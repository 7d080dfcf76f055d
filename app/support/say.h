// Messages to the user.
#pragma once

#include <string>

namespace vemoapp {

/// Shows a line in the command window; without a window nobody reads it and nothing happens.
void say(const std::string& line);

}  // namespace vemoapp
