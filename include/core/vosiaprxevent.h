// Application events: five moments at which configuration and run-time trees change.
//
// Both interfaces are called by position; the operations stand in the order of their slots, counted
// behind those of OdRxObject. The two orders differ from each other and from the order of firing,
// and stay as they are. Used on the interface thread alone.
#pragma once

#include <drawing/runtime.h>

namespace vosi {

/// Base of those who want to hear events; every operation does nothing unless overridden. What an
/// operation raises leaves the firing call, and later reactors aren't called for that event.
class VosiApRxEventReactor : public OdRxObject {
  public:
    /* 1*/ virtual void onMainWindowReady() {}
    /* 2*/ virtual void onAppStarted() {}
    /* 3*/ virtual void onAppExiting() {}
    /* 4*/ virtual void onSysConfigLoaded() {}
    /* 5*/ virtual void onUserConfigLoaded() {}
};

/// The dispatcher, in the system registry under "VosiRxEvent". A pass calls the reactors that stood
/// in it when it began, in the order in which they were added.
class VosiApRxEvent : public OdRxObject {
  public:
    /// Takes one reference; a reactor that is there already stays as it is. Must not be null.
    /* 1*/ virtual void addReactor(VosiApRxEventReactor* reactor) = 0;
    /// Drops the reference. During a pass the reactor is still called in that pass. One that isn't
    /// there may be on its way out or gone: addresses alone are compared.
    /* 2*/ virtual void removeReactor(VosiApRxEventReactor* reactor) = 0;
    /* 3*/ virtual void fireSysConfigLoaded() = 0;
    /* 4*/ virtual void fireUserConfigLoaded() = 0;
    /* 5*/ virtual void fireMainWindowReady() = 0;
    /* 6*/ virtual void fireAppStarted() = 0;
    /* 7*/ virtual void fireAppExiting() = 0;
};

using VosiApRxEventPtr = OdSmartPtr<VosiApRxEvent>;

}  // namespace vosi
