// The pointer by which nodes of a value tree are held. Comes with utils/elementvaluebase.h, which
// tells what a node is.
#pragma once

#include <cstddef>
#include <utility>

#include "utils/export.h"

class IElementValueBase;

/// Reference-counted pointer to a node; null means that there is no such node.
class UTILS_EXPORT VoJsonPtr {
  public:
    VoJsonPtr() = default;
    VoJsonPtr(std::nullptr_t) {}
    /// Takes a new reference.
    VoJsonPtr(IElementValueBase* node);
    VoJsonPtr(const VoJsonPtr& other) : VoJsonPtr(other.held) {}
    VoJsonPtr(VoJsonPtr&& other) noexcept : held(std::exchange(other.held, nullptr)) {}
    VoJsonPtr& operator=(VoJsonPtr other) noexcept {
        std::swap(held, other.held);
        return *this;
    }
    ~VoJsonPtr();

    /// Wraps a node that was just made; the creator's reference becomes the pointer's.
    static VoJsonPtr attach(IElementValueBase* node);

    /// Hands the reference over to the caller.
    IElementValueBase* detach() { return std::exchange(held, nullptr); }

    IElementValueBase* get() const { return held; }
    IElementValueBase* operator->() const { return held; }
    bool isNull() const { return held == nullptr; }
    explicit operator bool() const { return held != nullptr; }

    /// Number of elements of an array node, 0 for any other and for null.
    int ArrayCount() const;
    /// The element at the index; null outside the array and for any other node.
    VoJsonPtr operator()(int index) const;

    friend bool operator==(const VoJsonPtr& a, const VoJsonPtr& b) { return a.held == b.held; }
    friend bool operator==(const VoJsonPtr& a, std::nullptr_t) { return a.held == nullptr; }

  private:
    IElementValueBase* held = nullptr;
};
