#include "sicorout.h"

#include <new>
#include <type_traits>

#include "core/voservicekeys.h"
#include "rootservices.h"

namespace vosi {

namespace {

// Frees a coroutine as a holder of the interface can: its table has no destructor, and none may be
// added, since modules count its slots. So the storage goes and the destructor doesn't run, which
// is harmless as long as there is nothing for it to do.
void freeStorage(VosiCoroutine* coroutine) {
    static_assert(std::is_trivially_destructible_v<CCoroutine::Fields>,
                  "a coroutine that owns something has to be destroyed here");
    ::operator delete(static_cast<CCoroutine*>(coroutine));
}

}  // namespace

CCoroutine::CCoroutine(VoFiberHandle fiber, void* userData)
    : fields{.fiber = fiber, .userData = userData} {}

VosiCoroutine* CCoroutine::returnCoroutine() {
    if (fields.parent) {
        return fields.parent;
    }
    return requiredService<VosiCoroutineManagerSvr>(kFiberCoroutineKey)->mainCoroutine();
}

VosiCoroutine* CCoroutineManager::mainCoroutine() {
    if (!root) {
        const VoFiberHandle fiber = requiredService<VoFiberSvr>(kFiberKey)->currentFiber();
        root = std::make_unique<CCoroutine>(fiber, nullptr);
        coroutineByFiber[fiber] = root.get();
    }
    return root.get();
}

VosiCoroutine* CCoroutineManager::currentCoroutine() {
    mainCoroutine();
    return coroutineByFiber[requiredService<VoFiberSvr>(kFiberKey)->currentFiber()];
}

VosiCoroutine* CCoroutineManager::createCoroutine(VoFiberRoutine routine, void* argument,
                                                  void* userData) {
    if (!routine) {
        return nullptr;
    }
    mainCoroutine();
    const VoFiberSvrPtr fibers = requiredService<VoFiberSvr>(kFiberKey);
    // A fiber that couldn't be made is no failure here: the coroutine just can't be switched to.
    const VoFiberHandle fiber = fibers->createFiber(0, routine, argument);
    auto created = std::make_unique<CCoroutine>(fiber, userData);
    VosiCoroutine* creator = currentCoroutine();
    created->fields.parent = creator;
    if (creator) {
        static_cast<CCoroutine*>(creator)->fields.child = created.get();
    }
    coroutineByFiber[fiber] = created.get();
    return created.release();
}

bool CCoroutineManager::switchToCoroutine(VosiCoroutine* coroutine) {
    if (!coroutine || !coroutine->fiber()) {
        return false;
    }
    if (coroutine != currentCoroutine()) {
        // The reference is held while the caller sleeps.
        const VoFiberSvrPtr fibers = requiredService<VoFiberSvr>(kFiberKey);
        fibers->switchToFiber(coroutine->fiber());
    }
    return true;
}

bool CCoroutineManager::deleteCoroutine(VosiCoroutine* coroutine) {
    if (!coroutine) {
        return false;
    }
    const VoFiberHandle fiber = coroutine->fiber();
    // The main coroutine stays also when it has no fiber: the manager goes on pointing to it.
    if (fiber ? coroutine == mainCoroutine() : coroutine == root.get()) {
        return false;
    }
    // The current coroutine may be deleted like any other: its fiber runs on until its last switch.
    if (fiber) {
        requiredService<VoFiberSvr>(kFiberKey)->deleteFiber(fiber);
        coroutineByFiber.erase(fiber);
    }
    freeStorage(coroutine);
    return true;
}

bool CCoroutineManager::isMainCoroutine() {
    const VosiCoroutine* running = currentCoroutine();
    return running == mainCoroutine();
}

}  // namespace vosi
