// The auto-test service's module.
#include <app/services.h>

#include "autotestservice.h"

namespace vemoapp {

namespace {

class AutoTestModule : public OdRxModuleBase {
  public:
    void initApp() override {
        OdSmartPtr<CommandRecorder> recorder = OdRxObjectImpl<AutoTestService>::createObject();
        vo_arbitDict_regservice(vosi::kAutoTestKey, recorder);
        vo_arbitDict_regservice(kCommandRecorderKey, recorder);
    }
    void uninitApp() override {
        vo_arbitDict_clearservice(kCommandRecorderKey);
        vo_arbitDict_clearservice(vosi::kAutoTestKey);
    }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::AutoTestModule)
