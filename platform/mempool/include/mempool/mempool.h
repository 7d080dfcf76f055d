// The three functions behind the drawing runtime's allocator. Safe on any thread.
#pragma once

#include <cstddef>

#define MEMPOOL_EXPORT __attribute__((visibility("default")))

/// A block of at least `size` bytes, aligned for every fundamental type; null when there is none.
MEMPOOL_EXPORT void* alloc_thin_object(std::size_t size);

/// Resizes a block, moving it if need be; null leaves the block as it was. A null block makes one.
MEMPOOL_EXPORT void* realloc_thin_object(void* block, std::size_t newSize, std::size_t oldSize);

/// Releases a block of the two functions above; null is allowed.
MEMPOOL_EXPORT void free_thin_object(void* block);
