// Where a file that the search answered with stands, as a person would say it.
#pragma once

#include <string>
#include <vector>

namespace vemoapp {

/// The places that a search goes through, in its order. Folders are UTF-8.
struct SearchPlaces {
    std::string drawingFolder;         // empty without a saved drawing
    std::string workingFolder;         // where a relative name is tried as it stands
    bool fontIndex = false;            // the rest is the index of fonts, not a list
    std::string listName;              // as the configuration names it
    std::vector<std::string> folders;  // the list's entries
};

/// The first of the places that the file found for the name can have come from, "entry 2 of
/// supportPaths". Told from the folders alone: nothing is searched.
std::string placeOf(const std::string& name, const std::string& found, const SearchPlaces& places);

}  // namespace vemoapp
