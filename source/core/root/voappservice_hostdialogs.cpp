// What the drawing runtime asks of the user or of other modules through its host.
#include "voappservice.h"

OdDbUndoControllerPtr VoAppService::newUndoController() {
    return ExHostAppServices::newUndoController();
}

bool VoAppService::getPassword(const OdString& dwgName, bool isXref, OdPassword& password) {
    return ExHostAppServices::getPassword(dwgName, isXref, password);
}
