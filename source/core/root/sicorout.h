// Coroutines and their manager: fibers with identity, a caller's value and a tree of parents.
//
// Running is the fiber service's work alone; a switch of coroutines is one switch of fibers. Thread
// rule: used by the holder of the fiber baton only, so nothing here is locked.
#pragma once

#include <map>
#include <memory>

#include "core/vosicoroutine.h"

namespace vosi {

// Its base has no virtual destructor, by intent.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class CCoroutine : public VosiCoroutine {
  public:
    /// Links are the manager's to set; none is owned.
    struct Fields {
        VoFiberHandle fiber = nullptr;
        void* userData = nullptr;
        VosiCoroutine* parent = nullptr;
        VosiCoroutine* child = nullptr;
        VosiCoroutine* spare = nullptr;
        bool flag = true;
    };

    CCoroutine(VoFiberHandle fiber, void* userData);

    VoFiberHandle fiber() override { return fields.fiber; }
    void* userData() override { return fields.userData; }
    void setUserData(void* value) override { fields.userData = value; }
    VosiCoroutine* parent() override { return fields.parent; }
    VosiCoroutine* child() override { return fields.child; }
    VosiCoroutine* spare() override { return fields.spare; }
    VosiCoroutine* returnCoroutine() override;
    bool flag() override { return fields.flag; }
    void setFlag(bool value) override { fields.flag = value; }
    // Behind the interface's operations, so that its slots stay where they are.
    virtual ~CCoroutine() = default;

    Fields fields;
};

#pragma GCC diagnostic pop

class CCoroutineManager : public VosiCoroutineManagerSvr {
  public:
    VosiCoroutine* mainCoroutine() override;
    VosiCoroutine* currentCoroutine() override;
    VosiCoroutine* createCoroutine(VoFiberRoutine routine, void* argument, void* userData) override;
    bool switchToCoroutine(VosiCoroutine* coroutine) override;
    bool deleteCoroutine(VosiCoroutine* coroutine) override;
    bool isMainCoroutine() override;

  private:
    std::unique_ptr<CCoroutine> root;  // the main coroutine, made at the first need
    // Also holds null for each fiber that was asked about and isn't a coroutine's. Coroutines that
    // nobody deletes outlive the manager, by contract.
    std::map<VoFiberHandle, VosiCoroutine*> coroutineByFiber;
};

}  // namespace vosi
