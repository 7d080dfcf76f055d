#include "drawing/rxobject.h"

#include "drawing/rxclass.h"

namespace {

bool isOfClass(const OdRxObject& object, const OdRxClass* wanted) {
    const OdRxClass* own = wanted ? object.isA() : nullptr;
    return own && own->isDerivedFrom(wanted);
}

}  // namespace

OdRxObject* OdRxObject::queryX(const OdRxClass* protocolClass) const {
    // An object may outlive its class, and is an OdRxObject even then.
    const bool isThis = protocolClass == OdRxObject::desc() || isOfClass(*this, protocolClass);
    if (!isThis) {
        return x(protocolClass);
    }
    auto* self = const_cast<OdRxObject*>(this);
    self->addRef();
    return self;
}

OdRxObject* OdRxObject::x(const OdRxClass* protocolClass) const {
    const OdRxClass* own = isA();
    return own && protocolClass ? own->getX(protocolClass).detach() : nullptr;
}

OdRxClass* OdRxObject::isA() const {
    return OdRxObject::desc();
}

void OdRxObject::addRef() {}

void OdRxObject::release() {}

long OdRxObject::numRefs() const {
    return 1;
}

OdRxObjectPtr OdRxObject::clone() const {
    return nullptr;
}

void OdRxObject::copyFrom(const OdRxObject* /*source*/) {
    throw OdError(eNotApplicable);
}

OdRx::Ordering OdRxObject::comparedTo(const OdRxObject* other) const {
    return other == this ? OdRx::kEqual : OdRx::kNotOrderable;
}

bool OdRxObject::isEqualTo(const OdRxObject* other) const {
    return comparedTo(other) == OdRx::kEqual;
}
