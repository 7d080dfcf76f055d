// From the description of a face to its file.
#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include <drawing/runtime.h>

namespace vosi {

using Faces = OdArray<OdTtfDescriptor>;

/// The first face of the list that the key describes: with its typeface, letter for letter, and its
/// style, or one that goes by several names, joined by " & ", of which the key's typeface is a
/// part. Where there is none, a bold or italic request falls to the first face of the typeface in
/// any style. False, with `fileName` as it was, when nothing fits.
bool matchDescriptor(const OdTtfDescriptor& key, OdString& fileName, const Faces& list);

/// Answers of matchDescriptor over one list that only ever grows. It is brought up to date by each
/// look-up.
class FaceIndex {
  public:
    bool match(const OdTtfDescriptor& key, OdString& fileName, const Faces& list);

  private:
    using Place = Faces::size_type;
    using FirstPlace = std::optional<Place>;

    void takeNewFaces(const Faces& list);
    template <class Fits>
    FirstPlace findFirst(const OdString& typeface, std::size_t hash, const Faces& list,
                         Fits&& fitsToo) const;
    FirstPlace findInStyle(const OdTtfDescriptor& key, std::size_t hash, const Faces& list) const;
    FirstPlace findInAnyStyle(const OdTtfDescriptor& key, std::size_t hash,
                              const Faces& list) const;
    // One that comes no later than the other, if there is another.
    FirstPlace findComposite(const OdTtfDescriptor& key, const Faces& list,
                             FirstPlace before) const;

    // The first face of each typeface and style, by the typeface's hash: the typefaces themselves
    // are in the list.
    std::unordered_multimap<std::size_t, Place> firstPlaces;
    std::vector<Place> composites;  // the faces of several names
    Place indexedCount = 0;
};

}  // namespace vosi
