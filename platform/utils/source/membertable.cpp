#include "utils/membertable.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace {

std::uint32_t hashOf(std::string_view key) {
    const std::uint64_t hash = std::hash<std::string_view>()(key);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

// Keys of one object that are equally long often begin alike and seldom end so.
bool isSame(std::string_view a, std::string_view b) {
    return a.size() == b.size() && (a.empty() || (a.back() == b.back() && a == b));
}

}  // namespace

int MemberTable::find(std::string_view key) const {
    return index ? findIndexed(hashOf(key), key) : findOneByOne(key);
}

int MemberTable::findOneByOne(std::string_view key) const {
    for (std::size_t place = 0; place < members.size(); ++place) {
        if (isSame(members[place].key, key)) {
            return static_cast<int>(place);
        }
    }
    return -1;
}

IElementValueBase* MemberTable::nodeUnder(std::string_view key) const {
    const int place = find(key);
    return place < 0 ? nullptr : members[static_cast<std::size_t>(place)].node.get();
}

int MemberTable::findIndexed(std::uint32_t hash, std::string_view key) const {
    const std::size_t mask = index->size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot slot = (*index)[at];
        if (slot.place == 0) {
            return -1;
        }
        if (slot.hash == hash && members[slot.place - 1].key == key) {
            return static_cast<int>(slot.place - 1);
        }
    }
}

void MemberTable::reserve(std::size_t count) {
    members.reserve(count);
    growIndexFor(count);
}

void MemberTable::set(std::string_view key, VoJsonPtr node) {
    std::uint32_t hash = index ? hashOf(key) : 0;
    if (const int place = index ? findIndexed(hash, key) : findOneByOne(key); place >= 0) {
        members[static_cast<std::size_t>(place)].node = std::move(node);
        return;
    }
    const bool wasIndexed = index != nullptr;
    // The index first: when memory runs out, every member is still in it.
    growIndexFor(members.size() + 1);
    members.emplace_back(key, std::move(node));
    if (index) {
        hash = wasIndexed ? hash : hashOf(key);
        enter(*index, {hash, static_cast<std::uint32_t>(members.size())});
    }
}

VoJsonPtr MemberTable::remove(std::size_t place) {
    if (index) {
        Index rebuilt(index->size());
        const auto removed = static_cast<std::uint32_t>(place + 1);
        for (Slot slot : *index) {
            if (slot.place != 0 && slot.place != removed) {
                slot.place -= slot.place > removed ? 1 : 0;
                enter(rebuilt, slot);
            }
        }
        index->swap(rebuilt);
    }
    // The node outlives the shift: its release may run code that looks at this table.
    VoJsonPtr node = std::move(members[place].node);
    members.erase(members.begin() + static_cast<std::ptrdiff_t>(place));
    return node;
}

void MemberTable::growIndexFor(std::size_t count) {
    if (count <= kSearched || (index && index->size() >= 2 * count)) {
        return;
    }
    auto grown = std::make_unique<Index>(std::bit_ceil(2 * count));
    if (index) {
        std::for_each(index->begin(), index->end(), [&](Slot slot) {
            if (slot.place != 0) {
                enter(*grown, slot);
            }
        });
    } else {
        std::uint32_t place = 0;
        for (const Member& member : members) {
            enter(*grown, {hashOf(member.key), ++place});
        }
    }
    index = std::move(grown);
}

void MemberTable::enter(Index& index, Slot slot) {
    const std::size_t mask = index.size() - 1;
    std::size_t at = slot.hash & mask;
    while (index[at].place != 0) {
        at = (at + 1) & mask;
    }
    index[at] = slot;
}
