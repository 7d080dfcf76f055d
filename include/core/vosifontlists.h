// Lists of fonts that a document carries in its dictionary.
//
// A module may put lists of its own there; look-ups for that document read them before the
// service's own. What stands under one of the keys is taken for the key's class without a check.
// The arrays aren't locked: they belong to the interface thread.
#pragma once

#include <drawing/runtime.h>

namespace vosi {

/// Full paths of font files.
class VosiMapShxFont : public OdRxObject, public OdArray<OdString, OdObjectsAllocator<OdString>> {};

/// Faces of TrueType fonts.
class VosiMapTrueTypeFont : public OdRxObject,
                            public OdArray<OdTtfDescriptor, OdObjectsAllocator<OdTtfDescriptor>> {};

using VosiMapShxFontPtr = OdSmartPtr<VosiMapShxFont>;
using VosiMapTrueTypeFontPtr = OdSmartPtr<VosiMapTrueTypeFont>;

/// Keys in the dictionary of a document's data. The first is a VosiMapTrueTypeFont, the others are
/// each a VosiMapShxFont; a missing key is an empty list.
inline constexpr const OdChar* kDocumentFacesKey = L"FontTTF";
inline constexpr const OdChar* kDocumentMainShxKey = L"FontMainShx";
inline constexpr const OdChar* kDocumentBigShxKey = L"FontBigShx";
inline constexpr const OdChar* kDocumentTtfFilesKey = L"FontTTFFiles";

}  // namespace vosi
