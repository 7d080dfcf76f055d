// The one state of the running runtime: what odInitialize makes and odUninitialize drops.
#pragma once

#include "drawing/rxdictionary.h"
#include "drawing/rxsystemservices.h"
#include "dynamiclinker.h"

struct RuntimeState {
    OdRxSystemServices* services = nullptr;
    OdSmartPtr<DynamicLinker> linker;
    OdRxDictionaryPtr systemRegistry;
    OdRxDictionaryPtr serviceDictionary;
};

/// Null while the runtime isn't up.
RuntimeState* runtimeState();

/// Raises OdError (eNotInitializedYet) while the runtime isn't up.
RuntimeState& requireRuntimeState();
