// JSON as people read it.
#pragma once

#include <string>

namespace inspect {

/// JSON text on lines of its own, one member a line, indented.
std::string indentedJson(const std::string& json);

}  // namespace inspect
