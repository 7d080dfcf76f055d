// The children of an object node: texts with nodes, in the order of their insertion.
//
// A few keys are compared one by one; beyond kSearched, a hash index beside them tells where
// a key stands. Belongs to one thread at a time, as the node does that holds it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "utils/elementvaluebase.h"

class UTILS_EXPORT MemberTable {
  public:
    struct Member {
        Member(std::string_view text, VoJsonPtr value) : key(text), node(std::move(value)) {}

        std::string key;
        VoJsonPtr node;
    };

    /// The longest table that is searched without an index.
    static constexpr std::size_t kSearched = 12;

    std::size_t size() const { return members.size(); }
    const Member& at(std::size_t place) const { return members[place]; }
    /// Where the key stands, -1 when it is absent.
    int find(std::string_view key) const;
    /// The node under the key, null when it is absent; the table keeps its reference.
    IElementValueBase* nodeUnder(std::string_view key) const;

    /// Room for so many members, where their number is known beforehand.
    void reserve(std::size_t count);
    /// Replaces the node under the key, which keeps its place, or adds the two at the end.
    void set(std::string_view key, VoJsonPtr node);
    /// Takes a member out, the later ones move down; gives its node.
    VoJsonPtr remove(std::size_t place);
    /// The node of a member, to be moved away; the table is only good to be dropped then.
    VoJsonPtr& slot(std::size_t place) { return members[place].node; }

  private:
    // Open addressing: the key's hash and its place plus 1, where 0 marks a free slot. There are at
    // least twice as many slots as members, in a power of 2.
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t place = 0;
    };
    using Index = std::vector<Slot>;

    int findOneByOne(std::string_view key) const;
    int findIndexed(std::uint32_t hash, std::string_view key) const;
    void growIndexFor(std::size_t count);
    static void enter(Index& index, Slot slot);

    std::vector<Member> members;
    std::unique_ptr<Index> index;
};
