#include "vosiaprxeventimpl.h"

namespace vosi {

void VosiApRxEventImpl::addReactor(VosiApRxEventReactor* reactor) {
    if (!indexOf(reactor)) {
        reactors.append(OdRxObjectPtr(reactor));
    }
}

void VosiApRxEventImpl::removeReactor(VosiApRxEventReactor* reactor) {
    if (const auto index = indexOf(reactor)) {
        // Kept until the array is whole again: a reactor that goes may call here.
        const OdRxObjectPtr removed = reactors.getAt(*index);
        reactors.removeAt(*index);
    }
}

std::optional<unsigned int> VosiApRxEventImpl::indexOf(const VosiApRxEventReactor* reactor) const {
    // Addresses alone are compared: the reactor may be on its way out, or gone.
    for (unsigned int index = 0; index < reactors.size(); ++index) {
        if (reactors.getAt(index) == reactor) {
            return index;
        }
    }
    return std::nullopt;
}

void VosiApRxEventImpl::fireSysConfigLoaded() {
    fire(&VosiApRxEventReactor::onSysConfigLoaded);
}

void VosiApRxEventImpl::fireUserConfigLoaded() {
    fire(&VosiApRxEventReactor::onUserConfigLoaded);
}

void VosiApRxEventImpl::fireMainWindowReady() {
    fire(&VosiApRxEventReactor::onMainWindowReady);
}

void VosiApRxEventImpl::fireAppStarted() {
    fire(&VosiApRxEventReactor::onAppStarted);
}

void VosiApRxEventImpl::fireAppExiting() {
    fire(&VosiApRxEventReactor::onAppExiting);
}

void VosiApRxEventImpl::fire(void (VosiApRxEventReactor::*operation)()) const {
    // The copy holds references of its own: handlers may add and remove reactors, themselves too,
    // and the pass goes on over those that were there when it began.
    const OdArray<OdRxObjectPtr> pass(reactors);
    for (const OdRxObjectPtr& entry : pass) {
        if (entry.isNull()) {
            throw OdError_NotThatKindOfClass(nullptr, VosiApRxEventReactor::desc());
        }
        const OdSmartPtr<VosiApRxEventReactor> reactor(entry);
        (reactor.get()->*operation)();
    }
}

}  // namespace vosi
