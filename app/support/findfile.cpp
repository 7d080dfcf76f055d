#include "findfile.h"

#include <core/voexports.h>

namespace vemoapp {

OdString findFile(const OdString& name, OdDbBaseHostAppServices::FindFileHint hint,
                  OdDbBaseDatabase* database) {
    ExHostAppServices* host = vodbSystemServices();
    return host ? host->findFile(name, database, hint) : OdString();
}

}  // namespace vemoapp
