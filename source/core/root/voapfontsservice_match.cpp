// From the description of a face to its file, through all lists of faces.
#include "core/vosifontlists.h"
#include "facematch.h"
#include "rootservices.h"
#include "runobserver.h"
#include "voapfontsservice.h"

namespace vosi {

namespace {

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
           told("the faces of the index", ttfFaces.match(descriptor, fileName, ttfDescriptors)) ||
           matchDescriptor(descriptor, fileName, spareDescriptors);
}

}  // namespace vosi
