// Scans of font folders. Only headers are read.
#pragma once

#include <vector>

#include "fontindex.h"
#include "voapfontsread.h"

namespace vosi {

using PathEntries = std::vector<PathEntry>;

using Paths = std::vector<OdAnsiString>;

/// The paths of font files by their kind.
struct FontFiles {
    Paths shx;
    Paths trueType;
};

/// The font files below the folders, in the folders' order, one whose path stands in an earlier
/// entry letter for letter left out. Of each folder "*.shx" come before "*.shp" and "*.ttc" before
/// "*.ttf", each in the order of voutGlobNoCaseSensitive2. A file that two folders show is there
/// twice; a folder that isn't there holds nothing.
FontFiles fontFilesBelow(const PathEntries& entries);

/// Appends the paths of unifont and of big font files; other kinds are passed over. Raises OdError
/// (eEndOfFile) with the file's name for one that ends within its header; what was found before
/// stays.
void scanShxFiles(const Paths& paths, OdStringArray& mainList, OdStringArray& bigList);

/// Appends the faces of TrueType and OpenType files and collections, and the paths of the files
/// that could be read. A file that can't be read adds nothing.
void scanTtfFiles(const Paths& paths, OdArray<OdTtfDescriptor>& descriptors,
                  std::vector<TtfFaceRecord>& records, OdStringArray& files);

}  // namespace vosi
