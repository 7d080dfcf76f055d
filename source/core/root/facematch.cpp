#include "facematch.h"

#include <functional>
#include <string_view>

namespace vosi {

namespace {

bool isComposite(const OdTtfDescriptor& face) {
    // Hardly any name has the sign.
    return face.typeface.find(L'&') >= 0 && face.typeface.find(L" & ") >= 0;
}

std::size_t styleOf(const OdTtfDescriptor& face) {
    return (face.isBold() ? 1u : 0u) + (face.isItalic() ? 2u : 0u);
}

// A face that goes by several names answers to each part of them in every style.
bool hasName(const OdTtfDescriptor& composite, const OdTtfDescriptor& key) {
    return composite.typeface.find(key.typeface.view()) >= 0;
}

bool fits(const OdTtfDescriptor& face, const OdTtfDescriptor& key) {
    return isComposite(face) ? hasName(face, key)
                             : face.typeface == key.typeface && styleOf(face) == styleOf(key);
}

// A bold or italic request falls to any face of the family; a regular one doesn't, so that text
// without a style never comes out bold.
bool fallsToFamily(const OdTtfDescriptor& key) {
    return styleOf(key) != 0;
}

std::size_t hashOf(const OdString& typeface) {
    return std::hash<std::wstring_view>()(typeface.view());
}

}  // namespace

bool matchDescriptor(const OdTtfDescriptor& key, OdString& fileName, const Faces& list) {
    for (const OdTtfDescriptor& face : list) {
        if (fits(face, key)) {
            fileName = face.fileName;
            return true;
        }
    }
    if (fallsToFamily(key)) {
        for (const OdTtfDescriptor& face : list) {
            if (face.typeface == key.typeface) {
                fileName = face.fileName;
                return true;
            }
        }
    }
    return false;
}

bool FaceIndex::match(const OdTtfDescriptor& key, OdString& fileName, const Faces& list) {
    takeNewFaces(list);
    const std::size_t hash = hashOf(key.typeface);
    const FirstPlace exact = findInStyle(key, hash, list);
    FirstPlace place = findComposite(key, list, exact);
    if (!place) {
        place = exact || !fallsToFamily(key) ? exact : findInAnyStyle(key, hash, list);
    }
    if (place) {
        fileName = list[*place].fileName;
    }
    return place.has_value();
}

void FaceIndex::takeNewFaces(const Faces& list) {
    if (indexedCount == list.size()) {
        return;
    }
    firstPlaces.reserve(list.size());
    for (; indexedCount < list.size(); ++indexedCount) {
        const OdTtfDescriptor& face = list[indexedCount];
        const std::size_t hash = hashOf(face.typeface);
        if (!findInStyle(face, hash, list)) {
            firstPlaces.emplace(hash, indexedCount);
        }
        if (isComposite(face)) {
            composites.push_back(indexedCount);
        }
    }
}

template <class Fits>
FaceIndex::FirstPlace FaceIndex::findFirst(const OdString& typeface, std::size_t hash,
                                           const Faces& list, Fits&& fitsToo) const {
    FirstPlace first;
    const auto [begin, end] = firstPlaces.equal_range(hash);
    for (auto candidate = begin; candidate != end; ++candidate) {
        const Place place = candidate->second;
        const bool isEarlier = !first || place < *first;
        if (isEarlier && list[place].typeface == typeface && fitsToo(list[place])) {
            first = place;
        }
    }
    return first;
}

FaceIndex::FirstPlace FaceIndex::findInStyle(const OdTtfDescriptor& key, std::size_t hash,
                                             const Faces& list) const {
    return findFirst(key.typeface, hash, list,
                     [&key](const OdTtfDescriptor& face) { return styleOf(face) == styleOf(key); });
}

FaceIndex::FirstPlace FaceIndex::findInAnyStyle(const OdTtfDescriptor& key, std::size_t hash,
                                                const Faces& list) const {
    return findFirst(key.typeface, hash, list, [](const OdTtfDescriptor&) { return true; });
}

FaceIndex::FirstPlace FaceIndex::findComposite(const OdTtfDescriptor& key, const Faces& list,
                                               FirstPlace before) const {
    for (const Place place : composites) {
        if (before && place > *before) {
            break;
        }
        if (hasName(list[place], key)) {
            return place;
        }
    }
    return std::nullopt;
}

}  // namespace vosi
