// Opened shared libraries. A library is opened for good: its record and its code stay for the life
// of the process, and one handle of the system's loader has one record.
#pragma once

#include "drawing/odstring.h"
#include "drawing/rxmodule.h"

struct OdRxModuleLibrary {
    void* handle;
    /// The file's name without its folder, as it was first opened.
    OdString fileName;
};

/// What opening a library came to.
struct LibraryOpening {
    OdRxModuleLibrary* library = nullptr;
    /// Whether there is such a file; true with a null library for one that can't be loaded.
    bool found = false;
    /// When there is no library: what its file has against it, or the system loader's words.
    OdString reason;
};

/// Opens a file by its path, or, for a bare name, wherever the system's loader looks, the working
/// folder excepted. A file is checked (moduleRefusal) before it is opened; where the loader's cache
/// alone knows which file a name stands for, that is only afterwards, when the library is mapped.
LibraryOpening openModuleLibrary(const OdString& fileName);

/// The library's module entry; null, with the reason, when the library itself has none.
OdRxModuleEntry moduleEntryOf(const OdRxModuleLibrary& library, OdString& reason);

/// The part of a path behind its last "/".
OdString bareFileName(const OdString& path);
