// The pool is the C library's allocator: it is thread-safe, and a measured start-up spends less
// than one part in a hundred here (docs/decisions/pool.md).
#include "mempool/mempool.h"

#include <cstdlib>

void* alloc_thin_object(std::size_t size) {
    return std::malloc(size);
}

void* realloc_thin_object(void* block, std::size_t newSize, std::size_t /*oldSize*/) {
    // For a size of 0 the C library would release the block and answer null.
    return std::realloc(block, newSize > 0 ? newSize : 1);
}

void free_thin_object(void* block) {
    std::free(block);
}
