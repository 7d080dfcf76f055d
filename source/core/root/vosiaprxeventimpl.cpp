#include "vosiaprxeventimpl.h"

namespace vosi {

void VosiApRxEventImpl::addReactor(VosiApRxEventReactor* reactor) {
    const OdRxObjectPtr entry(reactor);
    if (!reactors.contains(entry)) {
        reactors.append(entry);
    }
}

void VosiApRxEventImpl::removeReactor(VosiApRxEventReactor* reactor) {
    unsigned int index = 0;
    if (reactors.find(OdRxObjectPtr(reactor), index)) {
        reactors.removeAt(index);
    }
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
