#include "sequence_dictionary_script.h"

#include <drawing/runtime.h>

#include <algorithm>

namespace sequence {

const std::vector<std::u32string>& keys() {
    static const std::vector<std::u32string> all = {
        U"Core/Fiber", U"core/fiber",
        U"Core/Fibe",  U"Core/Fiber/",
        U"",           U"\u00E9",
        U"e\u0301",    U"\uFFFD",
        U"\U0001F5FA", std::u32string(U"Core\0Fiber", 10),
        U"Core",       U"ODDB_SYSVARDICT",
    };
    return all;
}

int keyNumber(const std::u32string& key) {
    const auto found = std::find(keys().begin(), keys().end(), key);
    return found == keys().end() ? -1 : static_cast<int>(found - keys().begin());
}

void World::perform(const Action& action) {
    try {
        journal.push_back({"does", static_cast<int>(action.verb), resultOf(action)});
    } catch (const OdError& error) {
        journal.push_back({"raises", static_cast<int>(action.verb), error.code()});
    }
}

void World::end(int number) {
    journal.push_back({"goes", number});
    for (const Action& action : role(number).will) {
        perform(action);
    }
}

int World::resultOf(const Action& action) {
    switch (action.verb) {
        case Verb::kDrop:
            drop(action.third);
            return kNobody;
        case Verb::kExtension:
            return extension(action.first, action.second);
        case Verb::kExtend:
            return extend(action.first, action.second, action.third);
        case Verb::kWithdraw:
            return withdraw(action.first, action.second);
        case Verb::kQuery:
            return query(action.second, action.third);
        case Verb::kEndClass:
            endClass(action.first);
            return kNobody;
        case Verb::kAway:
            away();
            return kNobody;
        case Verb::kNewLife:
            newLife();
            return kNobody;
        default:
            return isOpen(action.first) ? throughDoor(action) : kNobody;
    }
}

int World::throughDoor(const Action& action) {
    const auto [verb, door, key, slot] = action;
    switch (verb) {
        case Verb::kPut:
            return wouldClose(door, slot) ? kNobody : put(door, key, slot);
        case Verb::kTake:
            return take(door, key);
        case Verb::kLook:
            return look(door, key);
        case Verb::kHas:
            return has(door, key) ? 1 : 0;
        case Verb::kList:
            for (const int entry : list(door)) {
                journal.push_back({"lists", entry});
            }
            return kNobody;
        case Verb::kKeep:
            keep(door, key, slot);
            return kNobody;
        case Verb::kCast:
            return cast(door, key);
        default:
            return kNobody;
    }
}

// A dictionary takes only younger ones, so that none ever holds itself.
bool World::wouldClose(std::size_t door, std::size_t slot) const {
    const int put = inSlot(slot);
    return isOwnDictionary(put) && put <= dictionaryAt(door);
}

}  // namespace sequence
