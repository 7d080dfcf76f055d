// The main window's module: the window, the table of commands and the input queue.
#include <app/services.h>

#include "commandregistry.h"
#include "inputqueue.h"
#include "terminalwindow.h"

namespace vemoapp {

namespace {

class MainUIModule : public OdRxModuleBase {
  public:
    void initApp() override {
        vo_arbitDict_regservice(kCommandTableKey, OdRxObjectImpl<CommandRegistry>::createObject());
        OdSmartPtr<CommandWindow> window = OdRxObjectImpl<TerminalWindow>::createObject();
        vo_arbitDict_regservice(kCommandWindowKey, window);
        vo_arbitDict_regservice(vosi::kMainUIKey, window);
        OdSmartPtr<InputRunner> queue = OdRxObjectImpl<InputQueue>::createObject();
        vo_arbitDict_regservice(kInputRunnerKey, queue);
        vo_arbitDict_regservice(vosi::kInputQueueKey, queue);
    }
    void uninitApp() override {
        const OdChar* const keys[] = {vosi::kInputQueueKey, kInputRunnerKey, vosi::kMainUIKey,
                                      kCommandWindowKey, kCommandTableKey};
        for (const OdChar* key : keys) {
            vo_arbitDict_clearservice(key);
        }
    }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::MainUIModule)
