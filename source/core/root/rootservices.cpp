#include "rootservices.h"

#include "core/voservicekeys.h"

vosi::VosiApRxEventPtr eventDispatcher() {
    const OdRxDictionaryPtr registry = odrxSysRegistry();
    return registry.isNull() ? vosi::VosiApRxEventPtr()
                             : vosi::VosiApRxEventPtr(registry->getAt(vosi::kRxEventKey));
}

OdSmartPtr<vosi::VosiDocument> activeDocument() {
    const auto manager = optionalService<vosi::VosiDocMgrSvr>(vosi::kDocMgrKey);
    return manager.isNull() ? OdSmartPtr<vosi::VosiDocument>() : manager->activeDocument();
}
