// Looking files up as the drawing runtime does.
#pragma once

#include <drawing/runtime.h>

namespace vemoapp {

/// Full path of a file through the host services' search, empty when it isn't found or there are no
/// services. The database is the drawing that asks, or null.
OdString findFile(const OdString& name,
                  OdDbBaseHostAppServices::FindFileHint hint = OdDbBaseHostAppServices::kDefault,
                  OdDbBaseDatabase* database = nullptr);

}  // namespace vemoapp
