// File names in the order of answers: without regard to case by what stands before the extension,
// then by the rest. Names take no block of memory each, since folders hold thousands.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
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
        // Of the folded stem, behind what all have in common, as numbers.
        std::pair<std::uint64_t, std::uint64_t> start;
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
    void sort();
    void takeStarts();
    // For two that start alike.
    bool comesBefore(const Entry& a, const Entry& b) const;

    std::string text;  // the names, each with its folded stem behind it
    std::vector<Entry> entries;
};
