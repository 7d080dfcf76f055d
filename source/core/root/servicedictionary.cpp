// The dictionary of named services, as modules reach it.
#include "core/voexports.h"
#include "voappservice.h"

namespace {

// Null without the application, and while its start-up hasn't come as far as the dictionary.
OdRxDictionaryPtr services() {
    return g_appService ? g_appService->arbitraryDictionary() : OdRxDictionaryPtr();
}

}  // namespace

void vo_arbitDict_regservice(const OdString& key, OdRxObjectPtr service) {
    if (const OdRxDictionaryPtr dictionary = services()) {
        dictionary->putAt(key, service.get());
    }
}

void vo_arbitDict_clearservice(const OdString& key) {
    if (const OdRxDictionaryPtr dictionary = services()) {
        dictionary->remove(key);
    }
}

OdRxObjectPtr vo_arbitDict_getservice(const OdString& key) {
    const OdRxDictionaryPtr& dictionary = appService().arbitraryDictionary();
    return dictionary.isNull() ? OdRxObjectPtr() : dictionary->getAt(key);
}
