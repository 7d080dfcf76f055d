#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "testsupport.h"

namespace {

int poolBlocks = 0;
bool poolIsEmpty = false;
int handlerCalls = 0;

void* poolAlloc(std::size_t size) {
    if (poolIsEmpty) {
        return nullptr;
    }
    ++poolBlocks;
    return std::malloc(size);
}
void* poolRealloc(void* block, std::size_t newSize, std::size_t /*oldSize*/) {
    return poolIsEmpty ? nullptr : std::realloc(block, newSize);
}
void poolFree(void* block) {
    --poolBlocks;
    std::free(block);
}
void refill() {
    ++handlerCalls;
    poolIsEmpty = false;
}

}  // namespace

TEST(Allocator, ReturnsEachBlockToWhereItCameFrom) {
    void* early = odrxAlloc(10);
    std::memset(early, 7, 10);
    auto* earlyObject = new OdRxObjectImpl<OdDbDatabase>;
    set_mempool_proc(poolAlloc, poolRealloc, poolFree);
    early = odrxRealloc(early, 1000);
    EXPECT_EQ(static_cast<char*>(early)[9], 7);
    EXPECT_EQ(poolBlocks, 0);

    void* late = odrxRealloc(nullptr, 1);
    auto* lateObject = new OdRxObjectImpl<OdDbDatabase>;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(late) % alignof(std::max_align_t), 0u);
    EXPECT_EQ(poolBlocks, 2);
    odrxFree(early);
    earlyObject->release();
    EXPECT_EQ(poolBlocks, 2);
    odrxFree(late);
    lateObject->release();
    EXPECT_EQ(poolBlocks, 0);
    odrxFree(nullptr);
}

TEST(Allocator, RefusesAPoolWithAFunctionMissing) {
    EXPECT_THROW(set_mempool_proc(poolAlloc, nullptr, poolFree), OdError);
    odrxFree(odrxAlloc(8));
    EXPECT_EQ(poolBlocks, 0);
}

TEST(Allocator, AsksTheNewHandlerBeforeItGivesUp) {
    set_mempool_proc(poolAlloc, poolRealloc, poolFree);
    poolIsEmpty = true;
    EXPECT_THROW(odrxAlloc(8), std::bad_alloc);
    EXPECT_THROW(new OdRxObjectImpl<OdDbDatabase>, std::bad_alloc);
    const std::new_handler former = std::set_new_handler(refill);
    void* block = odrxAlloc(8);
    std::set_new_handler(former);
    EXPECT_EQ(handlerCalls, 1);
    EXPECT_THROW(odrxRealloc(block, SIZE_MAX), std::bad_alloc);
    odrxFree(block);
}
