// Script files: the line "VEMO-SCRIPT 1", then one command a line; empty lines are nothing.
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace vemoapp {

inline constexpr const char* kScriptHeading = "VEMO-SCRIPT 1";

/// The commands of a script; nothing for what has another form: another first line, a line that is
/// too long or holds control characters, ill-formed UTF-8.
std::optional<std::vector<std::string>> readScript(std::istream& stream);

}  // namespace vemoapp
