// The service under "Core/Fiber": cooperative execution contexts, of which one runs at a time.
//
// Called by position, counted behind the operations of OdRxObject. The calling order is fixed:
// convertThreadToFiber on the first fiber's thread, then any number of createFiber, switchToFiber
// and deleteFiber, and at the end optionally convertFiberToThread from the fiber that was
// converted. Each fiber is a thread of its own, so thread-local state belongs to a fiber. A thread
// outside the fiber world must not create, switch or delete. It may ask currentFiber and
// isOffCurrentFiber at any time, and fiberData, currentFiberData and findFiberByData only while the
// fibers can't change.
#pragma once

#include <cstddef>

#include <drawing/runtime.h>

/// A fiber; opaque to callers.
struct VoFiberRecord;
using VoFiberHandle = VoFiberRecord*;

/// What a fiber runs. Its last action is a switchToFiber to another fiber, and its owner then calls
/// deleteFiber for it; should that switch return, the routine returns at once and touches no fiber
/// state. It must not raise.
using VoFiberRoutine = void (*)(void* data);

class VoFiberSvr : public OdRxObject {
  public:
    /// A fiber that runs the routine from the first switch to it on; null when no thread could be
    /// started, without a current fiber, and once the service was taken down. The stack size is
    /// ignored. `data` is the routine's argument and the fiber's data value.
    /* 1*/ virtual VoFiberHandle createFiber(std::size_t stackSize, VoFiberRoutine routine,
                                             void* data) = 0;
    /// Makes the calling thread a fiber and the current one.
    /* 2*/ virtual VoFiberHandle convertThreadToFiber(void* data) = 0;
    /// Takes the whole service down, for good: 1. When the fiber with this data isn't the current
    /// one, nothing happens: 0. Fibers still in use stay blocked for ever.
    /* 3*/ virtual int convertFiberToThread(void* data) = 0;
    /// Runs the fiber and sleeps until somebody switches back. Null, the current fiber, and a call
    /// without a current fiber change nothing.
    /* 4*/ virtual void switchToFiber(VoFiberHandle fiber) = 0;
    /// The same for the fiber that findFiberByData gives.
    /* 5*/ virtual void switchToFiberByData(void* data) = 0;
    /// Gives a fiber back for reuse; null is allowed. Its thread serves a later createFiber. When
    /// it never ran, that createFiber runs its routine at once, with the creator still current.
    /* 6*/ virtual void deleteFiber(VoFiberHandle fiber) = 0;
    /// The fiber's data value; null for a null handle.
    /* 7*/ virtual void* fiberData(VoFiberHandle fiber) = 0;
    /* 8*/ virtual void* currentFiberData() = 0;
    /* 9*/ virtual VoFiberHandle currentFiber() = 0;
    /// The first fiber in order of creation whose data equals the argument, null if there is none
    /// or that one was given back.
    /*10*/ virtual VoFiberHandle findFiberByData(void* data) = 0;
    /// True when there is no current fiber or the calling thread isn't its thread.
    /*11*/ virtual bool isOffCurrentFiber() = 0;
};

using VoFiberSvrPtr = OdSmartPtr<VoFiberSvr>;
