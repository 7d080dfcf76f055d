#include "sortednames.h"

#include <algorithm>
#include <tuple>

#include "casefold.h"
#include "pathtext.h"

namespace {

std::size_t commonLength(std::string_view a, std::string_view b) {
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    return static_cast<std::size_t>(inA - a.begin());
}

// The bytes as the digits of a number, so that numbers compare as the texts do; a shorter text has
// zeros behind it.
std::uint64_t firstBytes(std::string_view text) {
    std::uint64_t number = 0;
    for (std::size_t index = 0; index < sizeof number; ++index) {
        number = number << 8 | (index < text.size() ? static_cast<unsigned char>(text[index]) : 0u);
    }
    return number;
}

std::pair<std::uint64_t, std::uint64_t> startOf(std::string_view text) {
    const std::size_t half = std::min(text.size(), sizeof(std::uint64_t));
    return {firstBytes(text), firstBytes(text.substr(half))};
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
    takeStarts();
    std::sort(entries.begin(), entries.end(), [this](const Entry& a, const Entry& b) {
        if (a.isFirst != b.isFirst) {
            return a.isFirst;
        }
        return a.start != b.start ? a.start < b.start : comesBefore(a, b);
    });
}

// Names of one folder often begin alike.
void SortedNames::takeStarts() {
    if (entries.empty()) {
        return;
    }
    const std::string_view first = stemIn(entries.front());
    std::size_t common = first.size();
    for (const Entry& entry : entries) {
        common = std::min(common, commonLength(first.substr(0, common), stemIn(entry)));
    }
    for (Entry& entry : entries) {
        entry.start = startOf(stemIn(entry).substr(common));
    }
}

bool SortedNames::comesBefore(const Entry& a, const Entry& b) const {
    const int order = stemIn(a).compare(stemIn(b));
    return order != 0 ? order < 0 : tieBreaker(nameOf(a)) < tieBreaker(nameOf(b));
}
