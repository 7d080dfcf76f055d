// The characters of wide strings. Copies share one block until one of them is changed, so that a
// path may stand in many lists; the block's count is atomic, a string itself belongs to one thread
// at a time.
#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "drawing/export.h"
#include "drawing/refcounter.h"

class OdSharedText {
  public:
    OdSharedText() = default;
    explicit OdSharedText(std::wstring_view text) { append(text); }
    OdSharedText(const OdSharedText& other) noexcept : block(other.block) {
        if (block) {
            block->refs.increment();
        }
    }
    OdSharedText(OdSharedText&& other) noexcept : block(std::exchange(other.block, nullptr)) {}
    OdSharedText& operator=(OdSharedText other) noexcept {
        std::swap(block, other.block);
        return *this;
    }
    ~OdSharedText() { clear(); }

    bool empty() const { return size() == 0; }
    std::size_t size() const { return block ? block->size : 0; }
    /// With a NUL behind the last character. Good until the text is changed.
    const wchar_t* c_str() const { return block ? block->characters() : L""; }
    wchar_t operator[](std::size_t index) const { return c_str()[index]; }

    void clear() {
        if (block && block->refs.decrement()) {
            freeBlock(block);
        }
        block = nullptr;
    }
    /// Appends a text, which may be part of this one. Raises std::bad_alloc and leaves the text as
    /// it was.
    DRAWING_EXPORT void append(std::wstring_view text);
    void push_back(wchar_t character) { append({&character, 1}); }
    /// Drops what stands at the place and behind it; the place is none beyond the end.
    DRAWING_EXPORT void erase(std::size_t place);
    /// As many characters of any value, for writing, in a block that no other string sees; the text
    /// that was there is gone. Null for none. Raises std::bad_alloc and leaves the text as it was.
    DRAWING_EXPORT wchar_t* overwrite(std::size_t size);

  private:
    // The characters stand behind it, with a NUL behind the last.
    struct Block {
        OdRefCounter refs;
        std::size_t size;
        std::size_t capacity;

        wchar_t* characters() { return reinterpret_cast<wchar_t*>(this + 1); }
    };

    static Block* newBlock(std::size_t size, std::size_t capacity);
    DRAWING_EXPORT static void freeBlock(Block* block);

    Block* block = nullptr;
};
