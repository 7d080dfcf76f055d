#include "findfile.h"

#include <core/voexports.h>

namespace vemoapp {

OdString findFile(const OdString& name, OdDbBaseHostAppServices::FindFileHint hint) {
    ExHostAppServices* host = vodbSystemServices();
    return host ? host->findFile(name, nullptr, hint) : OdString();
}

}  // namespace vemoapp
