// A library, and no module.
#include "inspected.h"

namespace {

const inspected::Witness witness;

}  // namespace

__attribute__((visibility("default"))) double inspected::geometry::area(double width) {
    return width * width;
}
