// Looking services up.
//
// Service interfaces declare no run-time class of their own, so a cast asks for OdRxObject and
// passes for every registered object: the type is a promise of the key. Services are fetched anew
// for each use and released after it, so that a module may replace one at any time.
#pragma once

#include <drawing/runtime.h>

#include "core/voexports.h"
#include "core/vomoduleservices.h"
#include "core/vosiaprxevent.h"

/// The service under the key, null when there is none.
template <class T>
OdSmartPtr<T> optionalService(const OdChar* key) {
    return OdSmartPtr<T>(vo_arbitDict_getservice(key));
}

/// The service under the key. Raises OdError (eKeyNotFound) that names the key when there is none.
template <class T>
OdSmartPtr<T> requiredService(const OdChar* key) {
    OdSmartPtr<T> service = optionalService<T>(key);
    if (service.isNull()) {
        throw OdError(eKeyNotFound, OdString(L"No service is registered under ") + key);
    }
    return service;
}

/// The event dispatcher, null while there is none.
vosi::VosiApRxEventPtr eventDispatcher();

/// The current document, null when none is open or there is no document manager.
OdSmartPtr<vosi::VosiDocument> activeDocument();
