// Places from which a module's code may come. A file that a stranger could have put there is none:
// the working folder, which may be any folder that somebody opened a drawing in, and folders that
// everyone may write.
#pragma once

#include "drawing/odstring.h"

/// Why a module isn't taken from where its file stands; empty for a place that will do, and for a
/// file that isn't there. Of a symbolic link both places have to do.
OdString placeRefusal(const OdString& path);

/// What the folders of the system's loader have for a name.
struct LoaderPlace {
    /// The first file of that name in a folder that will do; empty when there is none.
    OdString path;
    /// With an empty path, why a file of that name was passed over; empty when there is none.
    OdString refusal;
};

/// Looks for a bare file name where the system's loader would: the runtime's own run path,
/// LD_LIBRARY_PATH, the system's folders. An empty or relative entry among them stands for the
/// working folder and is passed over. What only the loader's cache knows isn't found here.
LoaderPlace placeAmongLoaderFolders(const OdString& name);
