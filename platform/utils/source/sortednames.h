// File names in the order of answers: without regard to case by what stands before the extension,
// then by the rest. Names take no block of memory each, since folders hold thousands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class SortedNames {
  public:
    /// `folded` is the name without regard to case. One that comes first stands before all others.
    void add(std::string_view name, std::string_view folded, bool comesFirst = false);

    /// Puts the names in order. `visit` is called with each; the views are the list's own.
    template <class Visit>
    void forEach(Visit&& visit) {
        sort();
        for (const Entry& entry : entries) {
            visit(nameOf(entry));
        }
    }
    void clear();

  private:
    struct Entry {
        std::uint64_t key;  // bytes of the folded stem, those that decide at the moment
        std::uint32_t name;
        std::uint32_t stem;
        std::uint16_t nameLength;
        std::uint16_t stemLength;
        bool isFirst;
    };

    std::string_view nameOf(const Entry& entry) const {
        return std::string_view(text).substr(entry.name, entry.nameLength);
    }
    std::string_view stemIn(const Entry& entry) const {
        return std::string_view(text).substr(entry.stem, entry.stemLength);
    }
    using Place = std::vector<Entry>::iterator;

    void sort();
    // Puts names in order whose stems are the same up to the place.
    void sortFrom(Place first, Place last, std::size_t at);
    // The same of names with one key.
    void sortAlike(Place first, Place last, std::size_t upTo);

    std::string text;  // the names, each with its folded stem behind it
    std::vector<Entry> entries;
};
