// The service as a node of the tree.
#include <iterator>

#include "core/vosifontlists.h"
#include "fontproperties.h"
#include "rootservices.h"
#include "treehelpers.h"
#include "voapfontsservice.h"

namespace vosi {

namespace {

// What the active document carries under the key, then the service's own.
template <class List, class Array>
Array withActiveDocument(const OdChar* key, const Array& own) {
    Array all;
    const auto document = activeDocument();
    if (const OdRxObjectPtr index = documentIndex(document.get(), key); !index.isNull()) {
        all = *static_cast<List*>(index.get());
    }
    all.append(own);
    return all;
}

}  // namespace

VoJsonPtr VoApFontsService::mainShxProperty() const {
    return fontFilesNode(withActiveDocument<VosiMapShxFont>(kDocumentMainShxKey, mainShxFiles));
}

VoJsonPtr VoApFontsService::bigShxProperty() const {
    return fontFilesNode(withActiveDocument<VosiMapShxFont>(kDocumentBigShxKey, bigShxFiles));
}

VoJsonPtr VoApFontsService::ttfProperty() const {
    auto faces = withActiveDocument<VosiMapTrueTypeFont>(kDocumentFacesKey, ttfDescriptors);
    faces.append(spareDescriptors);
    return typefacesNode(faces, ttfFaceRecords);
}

// The service substitutes nothing itself; readers have always found the two names there.
VoJsonPtr VoApFontsService::emptyProperty() const {
    return tree::text("");
}

const PropEntry* VoApFontsService::getPropMap(int& count) const {
    const auto property = [](VoJsonPtr (VoApFontsService::*read)() const) {
        return [read](const ElementReadOnlyObject* node) {
            const auto* service = static_cast<const VoApFontsService*>(node);
            return service ? (service->*read)() : VoJsonPtr();
        };
    };
    static const PropEntry table[] = {{"shx", property(&VoApFontsService::mainShxProperty)},
                                      {"bigfont", property(&VoApFontsService::bigShxProperty)},
                                      {"ttf", property(&VoApFontsService::ttfProperty)},
                                      {"Alternate", property(&VoApFontsService::emptyProperty)},
                                      {"Substitute", property(&VoApFontsService::emptyProperty)}};
    count = static_cast<int>(std::size(table));
    return table;
}

}  // namespace vosi
