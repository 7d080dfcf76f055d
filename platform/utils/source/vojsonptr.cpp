// The smart pointer's look at arrays.
#include "elementaccess.h"

int VoJsonPtr::ArrayCount() const {
    return held && hasKind(*held, kElementArray) ? held->itemCount() : 0;
}

VoJsonPtr VoJsonPtr::operator()(int index) const {
    return held && hasKind(*held, kElementArray) ? held->getItem(index) : nullptr;
}
