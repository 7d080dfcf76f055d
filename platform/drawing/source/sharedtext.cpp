#include "drawing/sharedtext.h"

#include <algorithm>
#include <cwchar>
#include <limits>
#include <new>

OdSharedText::Block* OdSharedText::newBlock(std::size_t size, std::size_t capacity) {
    constexpr std::size_t most =
        (std::numeric_limits<std::ptrdiff_t>::max() - sizeof(Block)) / sizeof(wchar_t) - 1;
    if (capacity > most) {
        throw std::bad_alloc();
    }
    void* const place = ::operator new(sizeof(Block) + (capacity + 1) * sizeof(wchar_t));
    auto* const made = new (place) Block{{}, size, capacity};
    made->characters()[size] = L'\0';
    return made;
}

void OdSharedText::freeBlock(Block* block) {
    block->~Block();
    ::operator delete(block);
}

void OdSharedText::append(std::wstring_view text) {
    if (text.empty()) {
        return;
    }
    const std::size_t before = size();
    const std::size_t after = before + text.size();
    if (!block || after > block->capacity || !block->refs.isOne()) {
        // A text that grows once is likely to grow again.
        const std::size_t room = before == 0 ? after : std::max(after, 2 * before);
        OdSharedText grown;
        grown.block = newBlock(after, room);
        std::wmemcpy(grown.block->characters(), c_str(), before);
        std::wmemcpy(grown.block->characters() + before, text.data(), text.size());
        std::swap(block, grown.block);
        return;
    }
    std::wmemmove(block->characters() + before, text.data(), text.size());
    block->characters()[after] = L'\0';
    block->size = after;
}

void OdSharedText::erase(std::size_t place) {
    if (place >= size()) {
        return;
    }
    if (place == 0) {
        clear();
    } else if (block->refs.isOne()) {
        block->size = place;
        block->characters()[place] = L'\0';
    } else {
        *this = OdSharedText(std::wstring_view(c_str(), place));
    }
}

wchar_t* OdSharedText::overwrite(std::size_t size) {
    OdSharedText fresh;
    fresh.block = size == 0 ? nullptr : newBlock(size, size);
    std::swap(block, fresh.block);
    return block ? block->characters() : nullptr;
}
