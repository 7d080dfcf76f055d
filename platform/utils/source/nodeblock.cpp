#include "nodeblock.h"

#include <algorithm>
#include <new>

namespace {

// A node that outlives its tree keeps its whole block, so blocks stay small.
constexpr std::uint16_t kFirstRoom = 16;
constexpr std::uint16_t kMostRoom = 256;

}  // namespace

NodeBlock* NodeBlock::make(std::uint16_t room) {
    return new (odrxAlloc(sizeof(NodeBlock) + room * sizeof(ElementValue))) NodeBlock(room);
}

void NodeBlock::drop(std::uint32_t count) {
    // Whoever drops all that is left is alone with the block and needs no atomic subtraction.
    if (alive.load(std::memory_order_acquire) == count ||
        alive.fetch_sub(count, std::memory_order_acq_rel) == count) {
        odrxFree(this);
    }
}

void NodeMaker::nextBlock() {
    const auto next = static_cast<std::uint16_t>(std::clamp(2 * room, +kFirstRoom, +kMostRoom));
    NodeBlock* fresh = NodeBlock::make(next);
    leaveBlock();
    block = fresh;
    made = 0;
    room = next;
}

void NodeMaker::leaveBlock() {
    if (block && made < room) {
        block->drop(room - made);
    }
}
