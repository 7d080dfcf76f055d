// Start-up and shut-down of the application, in order.
#include "core/vemo_root.h"

#include <mempool/mempool.h>
#include <utils/paths.h>

#include "checkfile.h"
#include "core/vofibersvr.h"
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "core/vosicoroutine.h"
#include "rootlog.h"
#include "rootservices.h"
#include "runobserver.h"
#include "startuptrace.h"
#include "treehelpers.h"
#include "vemo_root_actions.h"
#include "vemo_root_hooks.h"
#include "vemo_root_modules.h"
#include "vemo_root_services.h"
#include "voappservice.h"
#include "vosiaprxeventimpl.h"

namespace {

void registerEventDispatcher() {
    if (const OdRxDictionaryPtr registry = odrxSysRegistry()) {
        // In the registry and not among the services: the configuration loaders fire events before
        // there is a service dictionary.
        registry->putAt(vosi::kRxEventKey,
                        OdRxObjectImpl<vosi::VosiApRxEventImpl>::createObject().get());
    }
}

// What asks for the registry below may be reached after a start that failed before there was one.
void removeFromRegistry(const OdChar* key) {
    if (const OdRxDictionaryPtr registry = odrxSysRegistry()) {
        registry->remove(key);
    }
}

void endDrawingRuntime() {
    if (odrxSystemServices()) {
        odUninitialize();
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
    run::Steps step;
    step("drawing runtime");
    odInitialize(g_appService);
    step("event dispatcher");
    registerEventDispatcher();
    step("command line");
    g_appService->parseCommandLine(const_cast<const char**>(argv), argc, callback);
    g_appService->setAppState(APP_STATE_COMMAND_LINE_READ);
    step("code pages");
    initializeCharMapper();
}

}  // namespace

int vemo_root(char** argv, int argc, VoMainAppCallback* callback) {
    StartupTrace::beginIfAsked();
    run::Steps step;
    step("memory pool");
    set_mempool_proc(alloc_thin_object, realloc_thin_object, free_thin_object);
    step("trace hook");
    odSetTraceFunc(odaTraceHook);
    step("application service");
    initAppService(argv, argc, callback);
    step("core services");
    registerCoreServices();
    step("main program");
    callback->initialize();
    step("system configuration");
    g_appService->loadSystemConfig();
    step("user configuration");
    g_appService->loadUserConfig();
    step("geometry hook");
    OdGeContext::gErrorFunc = geometryErrorHook;
    step("first wave of modules");
    loadModules();
    step("check file");
    writeCheckFile();

    step("main window service");
    const auto mainWindow = optionalService<vosi::VosiMainUISvr>(vosi::kMainUIKey);
    if (mainWindow.isNull()) {
        return kVemoNoMainWindow;
    }
    step("root fiber");
    const auto fibers = requiredService<VoFiberSvr>(vosi::kFiberKey);
    fibers->convertThreadToFiber(nullptr);
    step("main coroutine");
    // Makes the root fiber the main coroutine, before any window can ask for one.
    requiredService<vosi::VosiCoroutineManagerSvr>(vosi::kFiberCoroutineKey)->mainCoroutine();

    step("main window");
    if (const int result = mainWindow->showMainWindow(); result != 0) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kVemoRoot, "vemo_root",
                       "显示主窗体失败!%d", result);
        return result;
    }
    step("main window event");
    notifyMainWindowReady();
    step("aliases");
    loadAliasFile();
    step("second wave of modules");
    loadUserLibraries();
    step("running");
    g_appService->setAppState(APP_STATE_RUNNING);
    step("started event");
    const vosi::VosiApRxEventPtr dispatcher = eventDispatcher();
    if (dispatcher) {
        dispatcher->fireAppStarted();
    }
    step("script");
    vemo_root_load_script();
    step("remote debugger");
    connectRemoteDebug();
    step("first drawing");
    vemo_root_open_file();
    step("insertion units");
    applyInsertUnits();
    return 0;
}

int vemo_exit(VoMainAppCallback* callback) {
    VoAppService& service = appService();
    const StartupTrace::End traceEnd;
    run::Steps step;
    step("quitting");
    // Kept to the end: its reactors go with this reference, after the runtime.
    const vosi::VosiApRxEventPtr dispatcher = eventDispatcher();
    service.setAppState(APP_STATE_QUITTING);
    step("exiting event");
    if (dispatcher) {
        dispatcher->fireAppExiting();
    }
    step("documents");
    if (const auto documents = optionalService<vosi::VosiDocMgrSvr>(vosi::kDocMgrKey)) {
        documents->shutDown();
    }
    step("second wave of modules");
    service.unloadAllExModules();
    step("fixed modules");
    const VoJsonPtr fixedModules = unloadFixedModules();
    step("system variables");
    removeFromRegistry(vosi::kSysVarDictKey);
    step("main program");
    if (callback) {
        callback->uninitialize();
    }
    step("core services");
    unregisterCoreServices();
    step("configuration");
    service.releaseConfig();
    step("drawing runtime");
    removeFromRegistry(vosi::kRxEventKey);
    endDrawingRuntime();
    g_appService = nullptr;
    service.setAppState(APP_STATE_TERMINATED);
    step("services");
    service.releaseArbitraryDictionary();
    return 0;
}
