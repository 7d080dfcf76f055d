#include "mempool/mempool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

// A request that can't be met is answered with null in the sanitizers' allocators too.
// NOLINTBEGIN(bugprone-reserved-identifier)
#define SANITIZER_HOOK extern "C" __attribute__((visibility("default"))) const char*
SANITIZER_HOOK __asan_default_options();
SANITIZER_HOOK __asan_default_options() {
    return "allocator_may_return_null=1";
}
SANITIZER_HOOK __tsan_default_options();
SANITIZER_HOOK __tsan_default_options() {
    return "allocator_may_return_null=1";
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

constexpr std::size_t kMoreThanThereIs = PTRDIFF_MAX;

bool isAligned(const void* block) {
    return reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t) == 0;
}

bool holds(const void* block, unsigned char value, std::size_t size) {
    const auto* bytes = static_cast<const unsigned char*>(block);
    return std::all_of(bytes, bytes + size, [&](unsigned char byte) { return byte == value; });
}

TEST(MemoryPool, GivesAlignedBlocksThatDoNotOverlap) {
    const std::vector<std::size_t> sizes = {1, 2, 7, 8, 24, 31, 100, 4096, 1 << 20};
    std::vector<void*> blocks;
    for (std::size_t index = 0; index < sizes.size(); ++index) {
        blocks.push_back(alloc_thin_object(sizes[index]));
        ASSERT_NE(blocks.back(), nullptr);
        EXPECT_TRUE(isAligned(blocks.back())) << sizes[index];
        std::memset(blocks.back(), static_cast<int>(index), sizes[index]);
    }
    for (std::size_t index = 0; index < sizes.size(); ++index) {
        EXPECT_TRUE(holds(blocks[index], static_cast<unsigned char>(index), sizes[index]));
        free_thin_object(blocks[index]);
    }
    free_thin_object(nullptr);
}

TEST(MemoryPool, KeepsTheContentOfAResizedBlock) {
    void* block = realloc_thin_object(nullptr, 16, 0);
    ASSERT_NE(block, nullptr);
    std::memset(block, 0x5a, 16);
    std::size_t oldSize = 16;
    for (const std::size_t size : {40u, 100'000u, 17u, 16u, 4u}) {
        block = realloc_thin_object(block, size, oldSize);
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(isAligned(block));
        EXPECT_TRUE(holds(block, 0x5a, std::min<std::size_t>(size, 16)));
        oldSize = size;
    }
    free_thin_object(block);
}

TEST(MemoryPool, AnswersNullWhenThereIsNothingLeftAndKeepsTheBlock) {
    EXPECT_EQ(alloc_thin_object(kMoreThanThereIs), nullptr);
    void* block = alloc_thin_object(8);
    std::memset(block, 0x11, 8);
    EXPECT_EQ(realloc_thin_object(block, kMoreThanThereIs, 8), nullptr);
    EXPECT_TRUE(holds(block, 0x11, 8));
    free_thin_object(block);
}

// The C library would release the block and answer null, which callers read as a failure that left
// the block alone.
TEST(MemoryPool, ResizesToNothingWithoutReleasing) {
    void* block = realloc_thin_object(alloc_thin_object(8), 0, 8);
    EXPECT_NE(block, nullptr);
    free_thin_object(block);
}

TEST(MemoryPool, ServesBlocksThatAnotherThreadReleases) {
    constexpr int kThreads = 4;
    constexpr int kBlocks = 2000;
    std::vector<std::vector<void*>> blocks(kThreads);
    const auto onAllThreads = [](auto&& work) {
        std::vector<std::jthread> threads;
        threads.reserve(kThreads);
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back(work, thread);
        }
    };
    onAllThreads([&](int thread) {
        for (int index = 0; index < kBlocks; ++index) {
            const std::size_t size = 1 + static_cast<std::size_t>(index) % 64;
            void* block = realloc_thin_object(alloc_thin_object(size), size + 8, size);
            std::memset(block, thread, size + 8);
            blocks[static_cast<std::size_t>(thread)].push_back(block);
        }
    });
    onAllThreads([&](int thread) {
        const int owner = (thread + 1) % kThreads;
        for (void* block : blocks[static_cast<std::size_t>(owner)]) {
            EXPECT_TRUE(holds(block, static_cast<unsigned char>(owner), 9));
            free_thin_object(block);
        }
    });
}

}  // namespace
