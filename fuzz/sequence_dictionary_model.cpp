#include "sequence_dictionary_model.h"

#include <drawing/runtime.h>

#include <algorithm>
#include <utility>

namespace sequence {

void DictionaryModel::make(std::size_t slot) {
    slots[slot] = static_cast<int>(objects.size());
    objects.push_back({.references = 1, .entries = {}});
}

// ---- life ----

void DictionaryModel::beginLife() {
    isUp = isThere = true;
    registry[U"ODDB_SYSVARDICT"] = kForeign;
    for (Class& carrier : carriers) {
        carrier.isLiving = true;
    }
    for (int& protocol : protocols) {
        protocol = incarnations++;
    }
}

// The order of the application's end: runtime, and last of all the services.
void DictionaryModel::endLife() {
    isThere = true;
    for (std::size_t which = kChain + kProtocols; which-- > 0;) {
        endClass(which);
    }
    isUp = false;
    letGoAll(classDictionary);
    letGoAll(registry);
    letGoAll(std::exchange(carriers.back().extensions, {}));
    isThere = false;
    letGoAll(services);
}

void DictionaryModel::newLife() {
    endLife();
    beginLife();
}

// ---- dictionaries ----

int DictionaryModel::dictionaryAt(std::size_t door) const {
    if (door < kFirstOwn) {
        return kNobody;
    }
    return isOwnDictionary(slots[door]) ? slots[door] : going[door];
}

bool DictionaryModel::isOpen(std::size_t door) const {
    switch (door) {
        case kExported:
            return true;
        case kServices:
            return isThere;
        case kRegistry:
        case kClasses:
            return isUp;
        default:
            return dictionaryAt(door) != kNobody;
    }
}

DictionaryModel::Entries& DictionaryModel::entriesAt(std::size_t door) {
    switch (door) {
        case kExported:
        case kServices:
            return services;
        case kRegistry:
            return registry;
        case kClasses:
            return classDictionary;
        default:
            return objects[static_cast<std::size_t>(dictionaryAt(door))].entries;
    }
}

int DictionaryModel::put(std::size_t door, std::size_t key, std::size_t slot) {
    if (door == kExported && !isThere) {
        return kNobody;
    }
    if (keys()[key].empty()) {
        throw OdError(eInvalidKey);
    }
    if (slots[slot] == kNobody) {
        return take(door, key);
    }
    Entries& entries = entriesAt(door);
    const int placed = slots[slot];
    hold(placed);
    const auto [entry, isNew] = entries.emplace(keys()[key], placed);
    const int former = isNew ? kNobody : std::exchange(entry->second, placed);
    letGo(former);
    return door == kExported ? kNobody : former;
}

int DictionaryModel::take(std::size_t door, std::size_t key) {
    if (door == kExported && !isThere) {
        return kNobody;
    }
    const auto taken = entriesAt(door).extract(keys()[key]);
    const int former = taken.empty() ? kNobody : taken.mapped();
    letGo(former);
    return door == kExported ? kNobody : former;
}

int DictionaryModel::look(std::size_t door, std::size_t key) {
    if (door == kExported && !isThere) {
        throw OdError(eNotInitializedYet);
    }
    const Entries& entries = entriesAt(door);
    const auto found = entries.find(keys()[key]);
    return found == entries.end() ? kNobody : found->second;
}

bool DictionaryModel::has(std::size_t door, std::size_t key) {
    return look(door, key) != kNobody;
}

std::vector<int> DictionaryModel::list(std::size_t door) {
    std::vector<int> all;
    if (door != kExported) {
        for (const auto& [key, object] : entriesAt(door)) {
            all.push_back(keyNumber(key));
        }
    }
    return all;
}

void DictionaryModel::keep(std::size_t door, std::size_t key, std::size_t slot) {
    const int found = look(door, key);
    if (slots[slot] == kNobody) {
        hold(found);
        slots[slot] = found;
    }
}

int DictionaryModel::cast(std::size_t door, std::size_t key) {
    const int found = look(door, key);
    if (found < 0 || role(found).isDictionary) {
        return kNobody;
    }
    if (!role(found).answers) {
        throw OdError(eNotThatKindOfClass);
    }
    return found;
}

// ---- references ----

void DictionaryModel::drop(std::size_t slot) {
    const int dropped = slots[slot];
    const bool goes = isOwnDictionary(dropped) && references(dropped) == 1;
    slots[slot] = kNobody;
    const int before = goes ? std::exchange(going[slot], dropped) : going[slot];
    letGo(dropped);
    going[slot] = before;
}

void DictionaryModel::hold(int number) {
    if (number >= 0) {
        ++objects[static_cast<std::size_t>(number)].references;
    }
}

void DictionaryModel::letGo(int number) {
    if (number < 0 || --objects[static_cast<std::size_t>(number)].references > 0) {
        return;
    }
    if (role(number).isDictionary) {
        letGoAll(objects[static_cast<std::size_t>(number)].entries);
    } else {
        end(number);
    }
}

// The last key first, and each object while the others are still there.
void DictionaryModel::letGoAll(Entries& entries) {
    while (!entries.empty()) {
        const auto last = entries.extract(std::prev(entries.end()));
        letGo(last.mapped());
    }
}

void DictionaryModel::letGoAll(std::vector<Extension> extensions) {
    for (const Extension& row : extensions) {
        letGo(row.object);
    }
}

// ---- classes ----

int DictionaryModel::extensionFrom(std::size_t carrier, int protocol) const {
    // The nearest class that has one: up the chain, then the root.
    std::size_t at = carrier;
    for (;;) {
        for (const Extension& row : carriers[at].extensions) {
            if (row.protocol == protocol) {
                return row.object;
            }
        }
        if (at == kChain) {
            return kNobody;
        }
        at = at == 0 ? kChain : at - 1;
    }
}

int DictionaryModel::extension(std::size_t carrier, std::size_t protocol) {
    return carriers[carrier].isLiving && protocols[protocol] != kNobody
               ? extensionFrom(carrier, protocols[protocol])
               : kNobody;
}

int DictionaryModel::extend(std::size_t carrier, std::size_t protocol, std::size_t slot) {
    if (!carriers[carrier].isLiving) {
        return kNobody;
    }
    if (protocols[protocol] == kNobody || slots[slot] == kNobody) {
        throw OdError(eInvalidInput);
    }
    std::vector<Extension>& rows = carriers[carrier].extensions;
    const int added = slots[slot];
    hold(added);
    int former = kNobody;
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Extension& row) {
        return row.protocol == protocols[protocol];
    });
    if (found != rows.end()) {
        former = found->object;
        rows.erase(found);
    }
    rows.push_back({protocols[protocol], added});
    letGo(former);
    return former;
}

int DictionaryModel::withdraw(std::size_t carrier, std::size_t protocol) {
    std::vector<Extension>& rows = carriers[carrier].extensions;
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Extension& row) {
        return row.protocol == protocols[protocol];
    });
    if (!carriers[carrier].isLiving || found == rows.end()) {
        return kNobody;
    }
    const int former = found->object;
    rows.erase(found);
    letGo(former);
    return former;
}

int DictionaryModel::query(std::size_t protocol, std::size_t slot) {
    const int asked = slots[slot];
    if (asked < 0 || role(asked).isDictionary || !role(asked).answers) {
        return kNobody;
    }
    return extension(static_cast<std::size_t>(asked) % kCarriers, protocol);
}

void DictionaryModel::endClass(std::size_t which) {
    if (which >= kChain) {
        protocols[which - kChain] = kNobody;
        return;
    }
    carriers[which].isLiving = false;
    letGoAll(std::exchange(carriers[which].extensions, {}));
}

}  // namespace sequence
