// What the drawing runtime asks of the user or of other modules through its host. The library has
// no dialogs of its own: without a module that answers, the answer is no.
#include "core/voservicekeys.h"
#include "rootservices.h"
#include "voappservice.h"

// The form of a password service, which is called by position: its class is its module's own, and
// so a sanitizer that compares the names of classes must not look at the call. Not local to this
// file, or the compiler would know that nothing implements it.
class PasswordServiceForm : public OdRxObject {
  public:
    virtual bool getPassword(const OdString& drawing, bool isXref, OdPassword& password) = 0;
};

__attribute__((no_sanitize("vptr"))) static bool askForPassword(const OdRxObjectPtr& service,
                                                                const OdString& drawing,
                                                                bool isXref, OdPassword& password) {
    return static_cast<PasswordServiceForm*>(service.get())->getPassword(drawing, isXref, password);
}

OdDbUndoControllerPtr VoAppService::newUndoController() {
    return OdDbUndoControllerPtr(OdRxObjectPtr(OdRxObjectImpl<ExUndoController>::createObject()));
}

bool VoAppService::getPassword(const OdString& dwgName, bool isXref, OdPassword& password) {
    const OdRxObjectPtr service = vo_arbitDict_getservice(vosi::kGetPasswordKey);
    return !service.isNull() && askForPassword(service, dwgName, isXref, password);
}
