// The service under "Core/FiberCoroutine": fibers with identity and a tree of parents.
//
// Both interfaces are called by position; the manager's operations are counted behind those of
// OdRxObject. Control is explicit in both directions: a coroutine is resumed by switchToCoroutine
// and yields by switching to its returnCoroutine. Used by the holder of the fiber baton alone.
#pragma once

#include <drawing/runtime.h>

#include "core/vofibersvr.h"

namespace vosi {

// Modules built apart count the slots of this class from its first operation, so it must not gain a
// virtual destructor; coroutines are freed by the manager alone.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// One coroutine. Not reference-counted: made and freed by the manager. Links aren't owned and
/// aren't cleared when what they point to is freed.
class VosiCoroutine {
  public:
    /// Null when the fiber service couldn't make a fiber.
    /* 1*/ virtual VoFiberHandle fiber() = 0;
    /// The caller's own value.
    /* 2*/ virtual void* userData() = 0;
    /* 3*/ virtual void setUserData(void* value) = 0;
    /// The coroutine that created this one; null for the main coroutine.
    /* 4*/ virtual VosiCoroutine* parent() = 0;
    /// The coroutine last created from this one.
    /* 5*/ virtual VosiCoroutine* child() = 0;
    /* 6*/ virtual VosiCoroutine* spare() = 0;
    /// Where a coroutine yields to: its parent, or else the main coroutine.
    /* 7*/ virtual VosiCoroutine* returnCoroutine() = 0;
    /// The caller's own flag; true at first.
    /* 8*/ virtual bool flag() = 0;
    /* 9*/ virtual void setFlag(bool value) = 0;
};

#pragma GCC diagnostic pop

class VosiCoroutineManagerSvr : public OdRxObject {
  public:
    /// The coroutine of the fiber that was current at the first call of any operation here.
    /* 1*/ virtual VosiCoroutine* mainCoroutine() = 0;
    /// The coroutine of the current fiber; null when that fiber wasn't made here.
    /* 2*/ virtual VosiCoroutine* currentCoroutine() = 0;
    /// A coroutine that runs routine(argument) from the first switch to it on; its parent is the
    /// current one. Null for a null routine. Only on a coroutine.
    /* 3*/ virtual VosiCoroutine* createCoroutine(VoFiberRoutine routine, void* argument,
                                                  void* userData) = 0;
    /// Runs the coroutine and sleeps until somebody switches back; true as well for the current
    /// one. False for null and for a coroutine without a fiber.
    /* 4*/ virtual bool switchToCoroutine(VosiCoroutine* coroutine) = 0;
    /// Frees the coroutine and gives its fiber back. False for null and for the main coroutine.
    /* 5*/ virtual bool deleteCoroutine(VosiCoroutine* coroutine) = 0;
    /* 6*/ virtual bool isMainCoroutine() = 0;
};

using VosiCoroutineManagerSvrPtr = OdSmartPtr<VosiCoroutineManagerSvr>;

}  // namespace vosi
