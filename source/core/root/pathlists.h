// The search paths that the application uses at run time: one list of evaluated paths a key, under
// "paths" in the Runtime tree, and the user's own folders among them.
//
// Nothing here reports a failure: what can't be made or copied is missing afterwards, and the next
// start tries again. Used on the interface thread.
#pragma once

#include <utils/elementvaluebase.h>

namespace vosi {

/// Makes the list of the key anew: the paths under "paths" in the user tree, then those under
/// "Core/paths" in the system tree, with their variables replaced; no empty ones, and none twice.
void buildPathList(const char* key, const VoJsonPtr& runtimeRoot, const VoJsonPtr& systemRoot);

/// Makes the first folder of the key's list and fills it from `source`, whose variables are
/// replaced. A folder that is there, in whatever case, stays as it is.
void seedUserDataDir(const char* key, const OdAnsiString& source, const VoJsonPtr& systemRoot);

}  // namespace vosi
