// The service under "Core/FindFonts": finds support files by name, and is a read-only tree node.
//
// It keeps two counts: the tree's, which decides nothing, and the object model's, which decides its
// life. Callers are serialised; there are no locks.
#pragma once

#include "core/vomoduleservices.h"
#include "core/vosifindfontsvr.h"
#include "elementreadonlyobject.h"

namespace vosi {

class VoApFontsService : public VosiFindFontSvr, public ElementReadOnlyObject {
  public:
    OdString findFile(const OdString& name, OdDbBaseDatabase* database, int hint) override;
    OdString findFileInDocument(const OdString& name, OdRxObject* document, int hint) override;
    void scanFonts(int flags) override;
    void scanDocumentFonts(OdRxObject* document) override;
    bool ttfFileNameByDescriptor(const OdTtfDescriptor& descriptor, OdString& fileName) override;

    using ElementReadOnlyObject::addRef;
    using ElementReadOnlyObject::release;
    using OdRxObject::addRef;
    using OdRxObject::release;

  private:
    /// Folder of the executable, from the Runtime tree.
    static OdAnsiString exeRootPath();
    /// Appends the folders in which files of the hint are looked for; none for fonts.
    static void addPathsForHint(OdArray<OdAnsiString>& list, int hint);
    /// The first file that fits the name in the first folder that has one; the name may be a
    /// pattern.
    static OdString searchFolders(const OdString& name, const OdArray<OdAnsiString>& folders);
};

}  // namespace vosi
