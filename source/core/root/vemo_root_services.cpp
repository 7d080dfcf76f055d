#include "vemo_root_services.h"

#include <iterator>

#include <global/importedclasses.h>

#include "core/voexports.h"
#include "core/voservicekeys.h"
#include "sicorout.h"
#include "vemo_fiber.h"
#include "voapfontsservice.h"
#include "voappservice.h"

namespace {

struct ImportedClass {
    void (*initialize)();
    void (*uninitialize)();
};

template <class T>
constexpr ImportedClass imported() {
    return {&T::rxInit, &T::rxUninit};
}

// The order is fixed: a class stands behind its parent.
constexpr ImportedClass kImportedClasses[] = {
    imported<vosi::VosiApView>(),
    imported<vosi::VosiGsFloatObjectActionPE>(),
    imported<vosi::VosiRequest>(),
    imported<vosi::VosiSubCommandRequest>(),
    imported<vosi::VosiSubCommandPointRequest>(),
    imported<vosi::VosiSubCommandAngleRequest>(),
    imported<vosi::VosiSubCommandDistRequest>(),
    imported<vosi::VosiSubCommandEntselRequest>(),
    imported<vosi::VosiSubCommandStringRequest>(),
    imported<vosi::VosiSubCommandKeywordRequest>(),
    imported<vosi::VosiSubCommandIntRequest>(),
    imported<vosi::VosiSubCommandRealRequest>(),
    imported<vosi::HdiRxModule>(),
};

constexpr const OdChar* kRecomputeDimBlock = L"RecomputeDimBlock";

void initializeImportedClasses() {
    for (const ImportedClass& entry : kImportedClasses) {
        entry.initialize();
    }
}

void uninitializeImportedClasses() {
    for (auto entry = std::rbegin(kImportedClasses); entry != std::rend(kImportedClasses);
         ++entry) {
        entry->uninitialize();
    }
}

// The dictionary's reference is the only one that stays.
template <class T>
void registerService(const OdChar* key) {
    vo_arbitDict_regservice(key, OdRxObjectImpl<T>::createObject());
}

// The library's own font service outlives its entry in the dictionary, which a module may replace:
// whoever in the library points to it does so without a reference.
OdSmartPtr<vosi::VoApFontsService> ownFontService;

void registerFontService() {
    ownFontService = OdRxObjectImpl<vosi::VoApFontsService>::createObject();
    vo_arbitDict_regservice(vosi::kFindFontsKey, ownFontService);
}

}  // namespace

void registerCoreServices() {
    initializeImportedClasses();
    vosi::core_ui_dlg_initialize();
    registerService<VoFiberService>(vosi::kFiberKey);
    registerService<vosi::CCoroutineManager>(vosi::kFiberCoroutineKey);
    registerFontService();
    // The linker keeps it; an installation without it does without it.
    odrxDynamicLinker()->loadModule(kRecomputeDimBlock, true);
}

void unregisterCoreServices() {
    if (!g_appService) {
        return;
    }
    // There is no linker after a start that failed with the runtime's own.
    if (odrxSystemServices()) {
        odrxDynamicLinker()->unloadModule(kRecomputeDimBlock);
    }
    vo_arbitDict_clearservice(vosi::kFindFontsKey);
    // Still there when nobody heard that the application exits; the tree outlives the service.
    vosi::VoApFontsService::withdrawFonts(vo_runtime_config(""));
    ownFontService.release();
    vo_arbitDict_clearservice(vosi::kFiberCoroutineKey);
    vo_arbitDict_clearservice(vosi::kFiberKey);
    vosi::core_ui_dlg_uninitialize();
    uninitializeImportedClasses();
}
