// What a scan will read of font files, brought into the system's file cache ahead of it.
#pragma once

#include "fontscan.h"

namespace vosi {

/// Reads the first places of the files and their tables of names, and keeps nothing of them, when
/// some of the files aren't in the system's cache; gives whether it did. It does nothing where they
/// are there, where the system can't tell, or where no thread can be had. Paths are in UTF-8; what
/// can't be read is passed over.
///
/// A scan would wait for the disk at every file, twice, and the system would read ahead glyphs that
/// nobody wants. A few threads ask for the same places at once and for no more. They touch nothing
/// but the cache: the scan itself, with all it raises and keeps, stays on its caller's thread and
/// finds the same with or without them. They have ended when the call returns.
bool warmUpFonts(const Paths& paths);

}  // namespace vosi
