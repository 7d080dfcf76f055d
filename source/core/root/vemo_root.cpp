// Start-up and shut-down of the application, in order.
#include "core/vemo_root.h"

#include <cstdio>

#include <mempool/mempool.h>
#include <utils/paths.h>

#include "core/vofibersvr.h"
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "core/vosicoroutine.h"
#include "rootlog.h"
#include "rootservices.h"
#include "treehelpers.h"
#include "vemo_root_actions.h"
#include "vemo_root_hooks.h"
#include "vemo_root_modules.h"
#include "vemo_root_services.h"
#include "voappservice.h"
#include "vosiaprxeventimpl.h"

namespace {

constexpr const char* kCheckFile = "/var/tmp/vemo.check";

void registerEventDispatcher() {
    if (const OdRxDictionaryPtr registry = odrxSysRegistry()) {
        // In the registry and not among the services: the configuration loaders fire events before
        // there is a service dictionary.
        registry->putAt(vosi::kRxEventKey,
                        OdRxObjectImpl<vosi::VosiApRxEventImpl>::createObject().get());
    }
}

void initializeCharMapper() {
    const OdAnsiString folder = tree::textOr(vo_runtime_config("ExeRootPath"), "");
    // An installation without the map does with the built-in one.
    OdCharMapper::initialize(OdUtf8StringToOdString(voutCombinePath(folder, "adinit.dat")));
}

void initAppService(char** argv, int argc, VoMainAppCallback* callback) {
    static OdStaticRxObject<VoAppService> service;
    g_appService = &service;
    odInitialize(g_appService);
    registerEventDispatcher();
    g_appService->parseCommandLine(const_cast<const char**>(argv), argc, callback);
    g_appService->setAppState(APP_STATE_COMMAND_LINE_READ);
    initializeCharMapper();
}

void writeCheckFile() {
    if (std::FILE* file = std::fopen(kCheckFile, "w+")) {
        std::fprintf(file, "%s", "init done!");
        std::fclose(file);
    }
}

}  // namespace

int vemo_root(char** argv, int argc, VoMainAppCallback* callback) {
    set_mempool_proc(alloc_thin_object, realloc_thin_object, free_thin_object);
    odSetTraceFunc(odaTraceHook);
    initAppService(argv, argc, callback);
    registerCoreServices();
    callback->initialize();
    g_appService->loadSystemConfig();
    g_appService->loadUserConfig();
    OdGeContext::gErrorFunc = geometryErrorHook;
    loadModules();
    writeCheckFile();

    const auto mainWindow = optionalService<vosi::VosiMainUISvr>(vosi::kMainUIKey);
    if (mainWindow.isNull()) {
        return kVemoNoMainWindow;
    }
    const auto fibers = requiredService<VoFiberSvr>(vosi::kFiberKey);
    fibers->convertThreadToFiber(nullptr);
    // Makes the root fiber the main coroutine, before any window can ask for one.
    requiredService<vosi::VosiCoroutineManagerSvr>(vosi::kFiberCoroutineKey)->mainCoroutine();

    if (const int result = mainWindow->showMainWindow(); result != 0) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kVemoRoot, "vemo_root",
                       "显示主窗体失败!%d", result);
        return result;
    }
    notifyMainWindowReady();
    loadAliasFile();
    loadUserLibraries();
    g_appService->setAppState(APP_STATE_RUNNING);
    const vosi::VosiApRxEventPtr dispatcher = eventDispatcher();
    if (dispatcher) {
        dispatcher->fireAppStarted();
    }
    vemo_root_load_script();
    connectRemoteDebug();
    vemo_root_open_file();
    applyInsertUnits();
    return 0;
}

int vemo_exit(VoMainAppCallback* callback) {
    VoAppService& service = appService();
    // Kept to the end: its reactors go with this reference, after the runtime.
    const vosi::VosiApRxEventPtr dispatcher = eventDispatcher();
    service.setAppState(APP_STATE_QUITTING);
    if (dispatcher) {
        dispatcher->fireAppExiting();
    }
    if (const auto documents = optionalService<vosi::VosiDocMgrSvr>(vosi::kDocMgrKey)) {
        documents->shutDown();
    }
    service.unloadAllExModules();
    const VoJsonPtr fixedModules = unloadFixedModules();
    odrxSysRegistry()->remove(vosi::kSysVarDictKey);
    if (callback) {
        callback->uninitialize();
    }
    unregisterCoreServices();
    service.releaseConfig();
    odrxSysRegistry()->remove(vosi::kRxEventKey);
    odUninitialize();
    g_appService = nullptr;
    service.setAppState(APP_STATE_TERMINATED);
    service.releaseArbitraryDictionary();
    return 0;
}
