// The stamp in a module's file: which version of the interfaces it was built against.
#pragma once

#include <optional>

#include "drawing/rxmodulefile.h"
#include "elffile.h"

/// The version in the file's stamp; none when it has no stamp. Raises as ElfFile does.
std::optional<OdRxInterfaceVersion> moduleStampOf(const ElfFile& file);

/// Why the runtime doesn't take the file: for its place, for its stamp, or because the system's
/// loader wouldn't survive it. Empty for a file that it takes, and for any of which the loader has
/// to say whether it can be loaded.
OdString moduleRefusal(const OdString& path);
