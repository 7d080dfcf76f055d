// The auto-test service's module.
#include <app/services.h>

#include "autotestservice.h"

namespace {

class AutoTestModule : public OdRxModuleBase {
  public:
    void initApp() override {
        using namespace vemoapp;
        OdSmartPtr<CommandRecorder> recorder = OdRxObjectImpl<AutoTestService>::createObject();
        vo_arbitDict_regservice(vosi::kAutoTestKey, recorder);
        vo_arbitDict_regservice(kCommandRecorderKey, recorder);
    }
    void uninitApp() override {
        vo_arbitDict_clearservice(vemoapp::kCommandRecorderKey);
        vo_arbitDict_clearservice(vosi::kAutoTestKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(AutoTestModule)
