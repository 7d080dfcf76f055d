// Nodes side by side, many to one block of the runtime's allocator: how a reader makes the nodes of
// a tree. Each node has a life of its own, on whichever thread; the block goes with the last of
// them.
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

#include "elementaccess.h"

class NodeBlock {
  public:
    /// A block with room for so many nodes, which counts them all as alive.
    static NodeBlock* make(std::uint16_t room);

    /// Where the node stands: places count from 1, since 0 says that a node is in no block.
    void* at(std::uint16_t place) {
        return nodes() + (std::size_t{place} - 1) * sizeof(ElementValue);
    }

    /// The block of a node, null for a node in none.
    static NodeBlock* of(ElementValue& node) {
        const std::size_t place = ElementAccess::placeInBlock(node);
        return place > 0 ? reinterpret_cast<NodeBlock*>(&node - (place - 1)) - 1 : nullptr;
    }

    /// So many nodes are no longer, or never will be.
    void drop(std::uint32_t count);

  private:
    explicit NodeBlock(std::uint32_t room) : alive(room) {}
    std::byte* nodes() { return reinterpret_cast<std::byte*>(this + 1); }

    alignas(ElementValue) std::atomic<std::uint32_t> alive;
};

/// Ends nodes that nobody refers to any more. Neighbours are counted off their block together,
/// since an atomic subtraction for each would take most of the time.
class NodeEnder {
  public:
    NodeEnder() = default;
    NodeEnder(const NodeEnder&) = delete;
    NodeEnder& operator=(const NodeEnder&) = delete;
    ~NodeEnder() { countOff(); }

    void end(ElementValue& node) {
        NodeBlock* itsBlock = NodeBlock::of(node);
        if (!itsBlock) {
            delete &node;
            return;
        }
        if (itsBlock != block) {
            countOff();
            block = itsBlock;
        }
        ++ended;
        node.ElementValue::~ElementValue();
    }

  private:
    void countOff() {
        if (ended > 0) {
            block->drop(std::exchange(ended, 0));
        }
    }

    NodeBlock* block = nullptr;
    std::uint32_t ended = 0;
};

/// Makes nodes in blocks that grow with their number. Belongs to one thread.
class NodeMaker {
  public:
    NodeMaker() = default;
    NodeMaker(const NodeMaker&) = delete;
    NodeMaker& operator=(const NodeMaker&) = delete;
    ~NodeMaker() { leaveBlock(); }

    /// A new node of the kind.
    template <class T, class... Arguments>
    VoJsonPtr make(int kind, Arguments&&... arguments) {
        if (made == room) {
            nextBlock();
        }
        const auto place = static_cast<std::uint16_t>(made + 1);
        VoJsonPtr node = ElementAccess::makeAt<T>(block->at(place), place, kind,
                                                  std::forward<Arguments>(arguments)...);
        made = place;
        return node;
    }

  private:
    void nextBlock();
    void leaveBlock();

    NodeBlock* block = nullptr;
    std::uint16_t made = 0;
    std::uint16_t room = 0;
};
