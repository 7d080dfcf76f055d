// The runtime's life. What is up between odInitialize and odUninitialize hangs on one pointer,
// which is left alone when the process ends without odUninitialize: the objects below it may belong
// to libraries whose own data is gone by then.
#include "drawing/odinitialize.h"

#include <exception>
#include <iterator>
#include <memory>

#include "databaseextension.h"
#include "drawing/hostappservices.h"
#include "drawing/rxobjectimpl.h"
#include "rootclass.h"
#include "runtimestate.h"

namespace {

RuntimeState* state = nullptr;
OdTraceFunc traceFunc = nullptr;

struct ClassLife {
    void (*init)();
    void (*uninit)();
};

template <class T>
constexpr ClassLife lifeOf{&T::rxInit, &T::rxUninit};

// Parents stand before their children.
constexpr ClassLife classes[] = {
    lifeOf<OdRxClass>,
    lifeOf<OdRxDictionary>,
    lifeOf<OdRxModule>,
    lifeOf<OdStreamBuf>,
    lifeOf<OdRxSystemServices>,
    lifeOf<OdDbUndoController>,
    lifeOf<OdModelerGeometryBuilder>,
    lifeOf<OdDbBaseDatabase>,
    lifeOf<OdDbDatabase>,
    lifeOf<OdDbBaseDatabasePE>,
    lifeOf<OdDbBaseHostAppServices>,
    lifeOf<OdDbHostAppServices>,
};

void initClasses() {
    for (const ClassLife& life : classes) {
        life.init();
    }
    attachDatabaseExtension();
}

void uninitClasses() {
    for (auto life = std::rbegin(classes); life != std::rend(classes); ++life) {
        life->uninit();
    }
    dropRootExtensions();
}

OdRxDictionaryPtr newDictionary() {
    return OdRxDictionary::desc()->create();
}

std::unique_ptr<RuntimeState> makeState(OdRxSystemServices* services) {
    auto made = std::make_unique<RuntimeState>();
    made->services = services;
    made->linker = OdRxObjectImpl<DynamicLinker>::createObject();
    made->systemRegistry = newDictionary();
    made->serviceDictionary = newDictionary();
    made->systemRegistry->putAt(ODDB_SYSVARDICT, newDictionary().get());
    return made;
}

void raiseGeometryError(OdResult code) {
    throw OdError(code);
}

}  // namespace

void (*OdGeContext::gErrorFunc)(OdResult code) = raiseGeometryError;

RuntimeState* runtimeState() {
    return state;
}

RuntimeState& requireRuntimeState() {
    if (!state) {
        throw OdError(eNotInitializedYet);
    }
    return *state;
}

void odInitialize(OdRxSystemServices* services) {
    if (state || !services) {
        throw OdError(eInvalidInput, state ? L"the runtime is up already" : L"no system services");
    }
    try {
        initClasses();
        state = makeState(services).release();
    } catch (...) {
        uninitClasses();
        throw;
    }
}

void odUninitialize() {
    const std::exception_ptr fault = requireRuntimeState().linker->endModules();
    // What the registries release sees a runtime that is down.
    delete std::exchange(state, nullptr);
    uninitClasses();
    if (fault) {
        std::rethrow_exception(fault);
    }
}

OdRxSystemServices* odrxSystemServices() {
    return state ? state->services : nullptr;
}

OdRxDynamicLinker* odrxDynamicLinker() {
    return requireRuntimeState().linker.get();
}

OdRxDictionaryPtr odrxSysRegistry() {
    return state ? state->systemRegistry : nullptr;
}

OdRxDictionaryPtr odrxServiceDictionary() {
    return state ? state->serviceDictionary : nullptr;
}

void odSetTraceFunc(OdTraceFunc sink) {
    traceFunc = sink;
}

void odTrace(const OdString& message) {
    if (traceFunc) {
        traceFunc(message.c_str());
    }
}
