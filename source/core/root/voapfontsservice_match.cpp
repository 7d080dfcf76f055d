// From the description of a face to its file.
#include "core/vosifontlists.h"
#include "rootservices.h"
#include "runobserver.h"
#include "voapfontsservice.h"

namespace vosi {

namespace {

using Faces = OdArray<OdTtfDescriptor>;

bool hasStyle(const OdTtfDescriptor& face) {
    return face.isBold() || face.isItalic();
}

// A face that goes by several names, joined by " & ", answers to each part of them in every style.
bool fits(const OdTtfDescriptor& face, const OdTtfDescriptor& key) {
    if (face.typeface.find(L" & ") >= 0) {
        return face.typeface.find(key.typeface.view()) >= 0;
    }
    return face.typeface == key.typeface && face.isBold() == key.isBold() &&
           face.isItalic() == key.isItalic();
}

// A bold or italic request falls to any face of the family; a regular one doesn't, so that text
// without a style never comes out bold.
bool matchDescriptor(const OdTtfDescriptor& key, OdString& fileName, const Faces& list) {
    for (const OdTtfDescriptor& face : list) {
        if (fits(face, key)) {
            fileName = face.fileName;
            return true;
        }
    }
    if (hasStyle(key)) {
        for (const OdTtfDescriptor& face : list) {
            if (face.typeface == key.typeface) {
                fileName = face.fileName;
                return true;
            }
        }
    }
    return false;
}

bool matchInDocument(const OdTtfDescriptor& key, OdString& fileName, VosiDocument* document) {
    const OdRxObjectPtr index = documentIndex(document, kDocumentFacesKey);
    return !index.isNull() &&
           matchDescriptor(key, fileName, *static_cast<VosiMapTrueTypeFont*>(index.get()));
}

}  // namespace

bool VoApFontsService::ttfFileNameByDescriptor(const OdTtfDescriptor& descriptor,
                                               OdString& fileName) {
    const auto told = [&fileName](const char* place, bool hit) {
        run::placeTried(place, hit ? fileName : OdString());
        return hit;
    };
    return told("the active document's own faces",
                matchInDocument(descriptor, fileName, activeDocument().get())) ||
           told("the faces of the index", matchDescriptor(descriptor, fileName, ttfDescriptors)) ||
           matchDescriptor(descriptor, fileName, spareDescriptors);
}

}  // namespace vosi
