#include "commandnode.h"

#include <utils/elementvalue.h>

namespace vemoapp {

VoJsonPtr commandNode(const std::string& line) {
    VoJsonPtr node = ElementValue::createObject(kElementText);
    node->set_values(line);
    return node;
}

std::string commandOf(const VoJsonPtr& node) {
    return node ? node->strValue().str() : "";
}

}  // namespace vemoapp
