// Commands inside input records.
#pragma once

#include <string>

#include <utils/elementvaluebase.h>

namespace vemoapp {

/// The `inputNode` of a record that carries a command line.
VoJsonPtr commandNode(const std::string& line);

/// The command line of such a node, empty for any other node and for null.
std::string commandOf(const VoJsonPtr& node);

}  // namespace vemoapp
