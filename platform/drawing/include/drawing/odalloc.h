// The runtime's allocator. Every object of the object model lives in blocks of it.
//
// Until set_mempool_proc is called the blocks come from the C library; afterwards from the pool.
// Each block remembers where it came from, so that a block made before the pool was set is freed
// correctly after it.
#pragma once

#include <cstddef>

#include "drawing/export.h"

using OdAllocProc = void* (*)(std::size_t size);
using OdReallocProc = void* (*)(void* block, std::size_t newSize, std::size_t oldSize);
using OdFreeProc = void (*)(void* block);

/// Sets the three functions behind odrxAlloc, odrxRealloc and odrxFree for all blocks made from now
/// on. None may be null (OdError, eInvalidInput); the functions must stay callable for the life of
/// the process and be safe on any thread. May be called more than once.
DRAWING_EXPORT void set_mempool_proc(OdAllocProc alloc, OdReallocProc realloc, OdFreeProc free);

/// A block of at least `size` bytes, aligned for every fundamental type. Calls the installed
/// new-handler while the pool has nothing, and raises std::bad_alloc when there is none. Any
/// thread.
DRAWING_EXPORT void* odrxAlloc(std::size_t size);

/// Resizes a block of odrxAlloc, moving it if need be; null makes a new one. Fails like odrxAlloc,
/// and leaves the block as it was then. Any thread.
DRAWING_EXPORT void* odrxRealloc(void* block, std::size_t size);

/// Releases a block of odrxAlloc or odrxRealloc; null is allowed. Any thread.
DRAWING_EXPORT void odrxFree(void* block);

/// Gives a class the runtime's allocator for its objects.
#define ODRX_HEAP_OPERATORS()                             \
    static void* operator new(std::size_t size) {         \
        return odrxAlloc(size);                           \
    }                                                     \
    static void* operator new(std::size_t, void* place) { \
        return place;                                     \
    }                                                     \
    static void operator delete(void* block) {            \
        odrxFree(block);                                  \
    }                                                     \
    static void operator delete(void*, void*) {}
