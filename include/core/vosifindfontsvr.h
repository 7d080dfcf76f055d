// The service under "Core/FindFonts": finds fonts and every other support file.
//
// Called by position, counted behind the operations of OdRxObject. Callers are serialised.
#pragma once

#include <drawing/runtime.h>

namespace vosi {

/// Folders that a font scan covers.
enum VosiScanFlags : int { kScanSystemFolders = 1, kScanConfiguredFolders = 2 };

class VosiFindFontSvr : public OdRxObject {
  public:
    /// Full path of the file, empty when it isn't found. The database is the drawing that asks, or
    /// null; the hint is a FindFileHint. Raises OdError_NotThatKindOfClass for a database without
    /// the extension OdDbBaseDatabasePE.
    /* 1*/ virtual OdString findFile(const OdString& name, OdDbBaseDatabase* database,
                                     int hint) = 0;
    /// The same for a caller that holds the document. For a relative name and a hint outside 1 to 3
    /// the document must not be null.
    /* 2*/ virtual OdString findFileInDocument(const OdString& name, OdRxObject* document,
                                               int hint) = 0;
    /// Appends what the folders hold to the font index; `flags` is a sum of VosiScanFlags.
    /* 3*/ virtual void scanFonts(int flags) = 0;
    /* 4*/ virtual void scanDocumentFonts(OdRxObject* document) = 0;
    /// The file of the face that fits the description; false, with `fileName` unchanged, when there
    /// is none.
    /* 5*/ virtual bool ttfFileNameByDescriptor(const OdTtfDescriptor& descriptor,
                                                OdString& fileName) = 0;
};

using VosiFindFontSvrPtr = OdSmartPtr<VosiFindFontSvr>;

}  // namespace vosi
