// The service under "Core/FindFonts": keeps an index of the fonts that scans found, finds any
// support file by name, and is the read-only tree node "Fonts".
//
// It keeps two counts: the tree's, which decides nothing, and the object model's, which decides its
// life. The index only grows, and another scan appends to it. Callers are serialised; there are no
// locks.
#pragma once

#include "core/vomoduleservices.h"
#include "core/vosifindfontsvr.h"
#include "elementreadonlyobject.h"
#include "facematch.h"
#include "fontindex.h"
#include "voapfontsread.h"

namespace vosi {

class VoApFontsService : public VosiFindFontSvr, public ElementReadOnlyObject {
  public:
    /// Hands a configuration reactor that knows the service to the event dispatcher; without a
    /// dispatcher it logs so and goes on.
    VoApFontsService();

    OdString findFile(const OdString& name, OdDbBaseDatabase* database, int hint) override;
    OdString findFileInDocument(const OdString& name, OdRxObject* document, int hint) override;
    /// Raises the OdError of an SHX file that ends within its header, which names the file; what
    /// was indexed before stays.
    void scanFonts(int flags) override;
    void scanDocumentFonts(OdRxObject* document) override;
    bool ttfFileNameByDescriptor(const OdTtfDescriptor& descriptor, OdString& fileName) override;
    /// "shx", "bigfont", "ttf", "Alternate", "Substitute"; each is computed anew for every read.
    const PropEntry* getPropMap(int& count) const override;
    /// Holds a place in the table.
    virtual void unused() {}

    /// The path of the first indexed font with this file name, in the lists that a font hint
    /// selects: the document's first, which may be null, then the service's own.
    OdString findIndexedFont(const OdString& name, VosiDocument* document, int hint);

    using ElementReadOnlyObject::addRef;
    using ElementReadOnlyObject::release;
    using OdRxObject::addRef;
    using OdRxObject::release;

    /// Shows the service as "Fonts" below the root; a null root is passed over. The tree doesn't
    /// own it: take it out before the service goes.
    void publishFonts(const VoJsonPtr& root);
    static void withdrawFonts(const VoJsonPtr& root);

  private:
    using Folders = OdArray<OdAnsiString>;

    /// Folder of the executable, from the Runtime tree.
    static OdAnsiString exeRootPath();
    /// Appends the folders in which files of the hint are looked for; none for fonts.
    static void addPathsForHint(Folders& list, int hint);
    /// The first file that fits the name in the first folder that has one; the name may be a
    /// pattern.
    static OdString searchFolders(const OdString& name, const Folders& folders);
    VoJsonPtr mainShxProperty() const;
    VoJsonPtr bigShxProperty() const;
    VoJsonPtr ttfProperty() const;
    VoJsonPtr emptyProperty() const;

    OdArray<OdTtfDescriptor> spareDescriptors;  // searched last; nothing fills it
    OdArray<OdTtfDescriptor> ttfDescriptors;    // in the order of the scan, as all lists
    std::vector<TtfFaceRecord> ttfFaceRecords;
    OdStringArray mainShxFiles;
    OdStringArray bigShxFiles;
    OdStringArray ttfFiles;

    FileNameIndex mainShxNames;
    FileNameIndex bigShxNames;
    FileNameIndex ttfNames;
    FaceIndex ttfFaces;
};

}  // namespace vosi
