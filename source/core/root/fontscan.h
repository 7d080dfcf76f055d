// Scans of font folders. Only headers are read.
#pragma once

#include <vector>

#include "fontindex.h"
#include "voapfontsread.h"

namespace vosi {

using PathEntries = std::vector<PathEntry>;

// Both go through the folders in their order, leave out one whose path stands in an earlier entry
// letter for letter, and append what they find. A file that two folders show is found twice; a
// folder that isn't there holds nothing.

/// The paths of unifont and of big font files; other kinds are passed over. Raises OdError
/// (eEndOfFile) with the file's name for one that ends within its header; what was found before
/// stays.
void scanShxFiles(const PathEntries& entries, OdStringArray& mainList, OdStringArray& bigList);

/// The faces of TrueType and OpenType files and collections, and the paths of the files that could
/// be read. A file that can't be read adds nothing.
void scanTtfFiles(const PathEntries& entries, OdArray<OdTtfDescriptor>& descriptors,
                  std::vector<TtfFaceRecord>& records, OdStringArray& files);

}  // namespace vosi
