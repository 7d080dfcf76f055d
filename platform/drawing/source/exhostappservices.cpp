#include "drawing/hostappservices.h"
#include "drawing/rxobjectimpl.h"
#include "drawing/rxsystemservices.h"

namespace {

OdRxSystemServices& requireSystemServices() {
    OdRxSystemServices* services = odrxSystemServices();
    if (!services) {
        throw OdError(eNotInitializedYet);
    }
    return *services;
}

}  // namespace

OdString ExHostAppServices::findFile(const OdString& fileName, OdDbBaseDatabase* /*database*/,
                                     FindFileHint /*hint*/) {
    return requireSystemServices().accessFile(fileName, 0) ? fileName : OdString();
}

OdDbUndoControllerPtr ExHostAppServices::newUndoController() {
    return OdRxObjectImpl<ExUndoController>::createObject();
}

OdStreamBufPtr ExHostAppServices::readFile(const OdString& fileName) {
    return requireSystemServices().createFile(fileName);
}
