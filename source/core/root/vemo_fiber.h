// The fiber service: execution contexts that are one POSIX thread each, of which only the holder of
// the baton runs. The service objects hold nothing: there is one fiber world in a process.
#pragma once

#include <pthread.h>

#include "core/vofibersvr.h"

class VoFiberService : public VoFiberSvr {
  public:
    VoFiberHandle createFiber(std::size_t stackSize, VoFiberRoutine routine, void* data) override;
    VoFiberHandle convertThreadToFiber(void* data) override;
    int convertFiberToThread(void* data) override;
    void switchToFiber(VoFiberHandle fiber) override;
    void switchToFiberByData(void* data) override;
    void deleteFiber(VoFiberHandle fiber) override;
    void* fiberData(VoFiberHandle fiber) override;
    void* currentFiberData() override;
    VoFiberHandle currentFiber() override;
    VoFiberHandle findFiberByData(void* data) override;
    bool isOffCurrentFiber() override;
};

namespace vofiber {

/// The system's calls whose rare results can't be had on demand: a wait that returns without having
/// been woken, and a thread that can't be started. Tests replace them before they make a fiber;
/// nothing else writes here.
struct SystemCalls {
    int (*wait)(pthread_cond_t* cond, pthread_mutex_t* mutex);
    int (*startThread)(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*),
                       void* argument);
};
extern SystemCalls systemCalls;

}  // namespace vofiber
