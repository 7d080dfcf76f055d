#include "drawing/odalloc.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "drawing/oderror.h"

namespace {

struct Heap {
    OdAllocProc alloc;
    OdReallocProc realloc;
    OdFreeProc free;
    const Heap* former;
};

// Ahead of each block; its size keeps the block aligned for every fundamental type.
struct alignas(std::max_align_t) BlockHeader {
    const Heap* heap;
    std::size_t size;
};

void* systemAlloc(std::size_t size) {
    return std::malloc(size);
}
void* systemRealloc(void* block, std::size_t newSize, std::size_t /*oldSize*/) {
    return std::realloc(block, newSize);
}
void systemFree(void* block) {
    std::free(block);
}

constexpr Heap systemHeap{systemAlloc, systemRealloc, systemFree, nullptr};

std::atomic<const Heap*> currentHeap{&systemHeap};

// The block's new place, or what the installed new-handler makes of its absence.
template <class Attempt>
void* untilSatisfied(Attempt&& attempt) {
    for (;;) {
        if (void* block = attempt()) {
            return block;
        }
        const std::new_handler handler = std::get_new_handler();
        if (!handler) {
            throw std::bad_alloc();
        }
        handler();
    }
}

std::size_t withHeader(std::size_t size) {
    if (size > SIZE_MAX - sizeof(BlockHeader)) {
        throw std::bad_alloc();
    }
    return size + sizeof(BlockHeader);
}

void* enter(void* raw, const Heap* heap, std::size_t size) {
    auto* header = new (raw) BlockHeader{heap, size};
    return header + 1;
}

BlockHeader* headerOf(void* block) {
    return static_cast<BlockHeader*>(block) - 1;
}

}  // namespace

void set_mempool_proc(OdAllocProc alloc, OdReallocProc realloc, OdFreeProc free) {
    if (!alloc || !realloc || !free) {
        throw OdError(eInvalidInput, L"set_mempool_proc: a function is missing");
    }
    const Heap* heap = currentHeap.load(std::memory_order_acquire);
    if (heap->alloc == alloc && heap->realloc == realloc && heap->free == free) {
        return;
    }
    // Heaps are kept for ever, each reachable through the next: blocks point to theirs.
    currentHeap.store(new Heap{alloc, realloc, free, heap}, std::memory_order_release);
}

void* odrxAlloc(std::size_t size) {
    const std::size_t whole = withHeader(size);
    const Heap* heap = currentHeap.load(std::memory_order_acquire);
    return enter(untilSatisfied([&] { return heap->alloc(whole); }), heap, size);
}

void* odrxRealloc(void* block, std::size_t size) {
    if (!block) {
        return odrxAlloc(size);
    }
    const std::size_t whole = withHeader(size);
    BlockHeader* header = headerOf(block);
    const Heap* heap = header->heap;
    const std::size_t oldWhole = header->size + sizeof(BlockHeader);
    return enter(untilSatisfied([&] { return heap->realloc(header, whole, oldWhole); }), heap,
                 size);
}

void odrxFree(void* block) {
    if (block) {
        BlockHeader* header = headerOf(block);
        header->heap->free(header);
    }
}
