// OdArray: the runtime's copy-on-write array. Copies share one buffer until one of them is changed;
// the buffer's count is atomic, an array object itself belongs to one thread at a time.
//
// An index outside the array raises OdError (eInvalidIndex); an allocation failure while it grows
// raises OdError (eOutOfMemory) and leaves the array as it was.
#pragma once

#include <algorithm>
#include <atomic>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "drawing/export.h"
#include "drawing/odalloc.h"
#include "drawing/odstring.h"

/// Element policy that keeps its place in the type: elements are constructed, copied and destroyed
/// by their own operations.
template <class T>
class OdObjectsAllocator {};

/// Raises OdError (eOutOfMemory).
[[noreturn]] DRAWING_EXPORT void odThrowOutOfMemory();

template <class T, class Policy = OdObjectsAllocator<T>>
class OdArray {
    static_assert(!std::is_same_v<T, bool>, "elements must be objects with addresses");

  public:
    using value_type = T;
    using size_type = unsigned int;
    using const_iterator = const T*;
    using iterator = T*;

    OdArray() = default;
    OdArray(const OdArray& other) noexcept : buffer(other.buffer) { share(); }
    OdArray(OdArray&& other) noexcept : buffer(std::exchange(other.buffer, nullptr)) {}
    OdArray& operator=(OdArray other) noexcept {
        std::swap(buffer, other.buffer);
        return *this;
    }
    ~OdArray() { drop(); }

    size_type size() const { return buffer ? static_cast<size_type>(buffer->items.size()) : 0; }
    size_type length() const { return size(); }
    bool isEmpty() const { return size() == 0; }

    const T& at(size_type index) const {
        checkIndex(index);
        return buffer->items[index];
    }
    /// Takes a private copy of a shared buffer first, as does every operation that may change it.
    T& at(size_type index) {
        checkIndex(index);
        return raising([this]() -> T* { return own().data(); })[index];
    }
    const T& operator[](size_type index) const { return at(index); }
    T& operator[](size_type index) { return at(index); }
    const T& getAt(size_type index) const { return at(index); }
    OdArray& setAt(size_type index, const T& value) {
        at(index) = value;
        return *this;
    }
    const T& first() const { return at(0); }
    const T& last() const { return at(size() - 1); }

    /// Appends a copy and gives its index.
    size_type append(const T& value) {
        change([&](std::vector<T>& items) { items.push_back(value); });
        return size() - 1;
    }
    size_type append(T&& value) {
        change([&](std::vector<T>& items) { items.push_back(std::move(value)); });
        return size() - 1;
    }
    void push_back(const T& value) { append(value); }
    OdArray& append(const OdArray& other) {
        if (other.isEmpty()) {
            return *this;
        }
        if (isEmpty()) {
            return *this = other;
        }
        const OdArray source(other);
        change([&](std::vector<T>& items) {
            items.insert(items.end(), source.begin(), source.end());
        });
        return *this;
    }
    OdArray& insertAt(size_type index, const T& value) {
        if (index != size()) {
            checkIndex(index);
        }
        change([&](std::vector<T>& items) { items.insert(items.begin() + index, value); });
        return *this;
    }
    /// Removes one element; the later ones move down.
    OdArray& removeAt(size_type index) {
        checkIndex(index);
        change([&](std::vector<T>& items) { items.erase(items.begin() + index); });
        return *this;
    }
    void resize(size_type count) {
        change([&](std::vector<T>& items) { items.resize(count); });
    }
    void reserve(size_type count) {
        change([&](std::vector<T>& items) { items.reserve(count); });
    }
    void clear() {
        drop();
        buffer = nullptr;
    }

    /// Looks for an equal element from `start` on and gives its index in `found`.
    bool find(const T& value, size_type& found, size_type start = 0) const {
        for (size_type index = start; index < size(); ++index) {
            if (buffer->items[index] == value) {
                found = index;
                return true;
            }
        }
        return false;
    }
    bool contains(const T& value) const {
        size_type index = 0;
        return find(value, index);
    }

    const_iterator begin() const { return buffer ? buffer->items.data() : nullptr; }
    const_iterator end() const { return begin() + size(); }
    iterator begin() {
        return buffer ? raising([this]() -> T* { return own().data(); }) : nullptr;
    }
    iterator end() { return begin() + size(); }
    const T* getPtr() const { return begin(); }

    friend bool operator==(const OdArray& a, const OdArray& b) {
        return a.buffer == b.buffer || std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

  private:
    struct Buffer {
        ODRX_HEAP_OPERATORS()
        // Elements go in the reverse of the order in which they came.
        ~Buffer() {
            while (!items.empty()) {
                items.pop_back();
            }
        }
        std::atomic<int> refs{1};
        std::vector<T> items;
    };

    void share() noexcept {
        if (buffer) {
            buffer->refs.fetch_add(1, std::memory_order_relaxed);
        }
    }
    void drop() noexcept {
        if (buffer && buffer->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete buffer;
        }
    }
    void checkIndex(size_type index) const {
        if (index >= size()) {
            odThrowInvalidIndex();
        }
    }
    /// The elements for writing, in a buffer that no other array sees.
    std::vector<T>& own() {
        if (!buffer) {
            buffer = new Buffer;
        } else if (buffer->refs.load(std::memory_order_acquire) != 1) {
            auto* copy = new Buffer;
            try {
                copy->items = buffer->items;
            } catch (...) {
                delete copy;
                throw;
            }
            drop();
            buffer = copy;
        }
        return buffer->items;
    }
    template <class Change>
    void change(Change&& apply) {
        raising([&] { apply(own()); });
    }
    // Failures of memory as the array's own error.
    template <class Action>
    static auto raising(Action&& action) {
        try {
            return action();
        } catch (const std::bad_alloc&) {
            odThrowOutOfMemory();
        } catch (const std::length_error&) {
            odThrowOutOfMemory();
        }
    }

    Buffer* buffer = nullptr;
};

using OdStringArray = OdArray<OdString, OdObjectsAllocator<OdString>>;
