// A tree node as code sees it that was built apart: a pointer to a table of numbered positions.
#pragma once

#include <utility>

#include "slotcall.h"

namespace slots {

/// Reference to a tree node: one pointer, which counts through positions 1 and 2.
class NodePtr {
  public:
    NodePtr() = default;
    /// Takes a new reference.
    NodePtr(const void* node) : held(node) { count(1); }
    NodePtr(const NodePtr& other) : NodePtr(other.held) {}
    NodePtr(NodePtr&& other) noexcept : held(std::exchange(other.held, nullptr)) {}
    NodePtr& operator=(NodePtr other) noexcept {
        std::swap(held, other.held);
        return *this;
    }
    ~NodePtr() { count(2); }

    const void* get() const { return held; }
    explicit operator bool() const { return held != nullptr; }

  private:
    void count(int position) const {
        if (held) {
            call<void()>(held, ofNode(position));
        }
    }

    const void* held = nullptr;
};

/// Calls a node's operation by its position.
template <class Signature, class... Values>
auto callNode(const NodePtr& node, int position, Values&&... values) {
    return call<Signature>(node.get(), ofNode(position), std::forward<Values>(values)...);
}

// Kinds that every node has a number for; they stand in the low byte of position 3.
inline constexpr int kArrayNode = 1;
inline constexpr int kObjectNode = 2;
inline constexpr int kTextNode = 4;
inline constexpr int kKindMask = 0xff;

inline int kindOf(const NodePtr& node) {
    return callNode<int()>(node, 3) & kKindMask;
}

}  // namespace slots
