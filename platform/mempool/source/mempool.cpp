// The pool is the C library's allocator: it is thread-safe, and the start-up of an application has
// not been measured to need a faster one.
#include "mempool/mempool.h"

#include <cstdlib>

void* alloc_thin_object(std::size_t size) { return std::malloc(size); }

void* realloc_thin_object(void* block, std::size_t newSize, std::size_t /*oldSize*/) {
    return std::realloc(block, newSize);
}

void free_thin_object(void* block) { std::free(block); }
