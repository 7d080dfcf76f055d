#include "sortednames.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <tuple>

#include "casefold.h"
#include "pathtext.h"

namespace {

constexpr std::size_t kKeySize = sizeof(std::uint64_t);

// So many bytes from the place on as the digits of a number, so that numbers compare as the texts
// do; behind the text's end stand zeros.
std::uint64_t keyAt(std::string_view text, std::size_t place) {
    std::uint64_t key = 0;
    if (text.size() >= place + kKeySize) {
        std::memcpy(&key, text.data() + place, kKeySize);
    } else if (text.size() > place) {
        std::memcpy(&key, text.data() + place, text.size() - place);
    }
    return std::endian::native == std::endian::little ? __builtin_bswap64(key) : key;
}

// Names hold no zeros.
bool showsEnd(std::uint64_t key) {
    return (key & 0xFF) == 0;
}

auto tieBreaker(std::string_view name) {
    const std::string_view stem = stemOf(name);
    const std::string_view extension = name.substr(stem.size());
    return std::tuple(stem, foldCase(extension), extension);
}

}  // namespace

void SortedNames::add(std::string_view name, std::string_view folded, bool comesFirst) {
    const std::string_view stem = stemOf(folded);
    const auto at = static_cast<std::uint32_t>(text.size());
    const auto nameLength = static_cast<std::uint16_t>(name.size());
    entries.push_back(
        {{}, at, at + nameLength, nameLength, static_cast<std::uint16_t>(stem.size()), comesFirst});
    text += name;
    text += stem;
}

void SortedNames::clear() {
    text.clear();
    entries.clear();
}

void SortedNames::sort() {
    const auto others = std::partition(entries.begin(), entries.end(),
                                       [](const Entry& entry) { return entry.isFirst; });
    sortFrom(entries.begin(), others, 0);
    sortFrom(others, entries.end(), 0);
}

void SortedNames::sortFrom(Place first, Place last, std::size_t at) {
    for (Place entry = first; entry != last; ++entry) {
        entry->key = keyAt(stemIn(*entry), at);
    }
    const auto byKey = [](const Entry& a, const Entry& b) { return a.key < b.key; };
    // Names of one folder often begin alike.
    if (!std::is_sorted(first, last, byKey)) {
        std::sort(first, last, byKey);
    }
    while (first != last) {
        const std::uint64_t key = first->key;
        const Place next =
            std::find_if(first, last, [key](const Entry& entry) { return entry.key != key; });
        if (next - first > 1) {
            sortAlike(first, next, at + kKeySize);
        }
        first = next;
    }
}

void SortedNames::sortAlike(Place first, Place last, std::size_t upTo) {
    if (!showsEnd(first->key)) {
        sortFrom(first, last, upTo);
        return;
    }
    std::sort(first, last, [this](const Entry& a, const Entry& b) {
        return tieBreaker(nameOf(a)) < tieBreaker(nameOf(b));
    });
}
