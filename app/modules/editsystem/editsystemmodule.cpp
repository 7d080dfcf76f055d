// The system variables' module.
#include <app/commandtable.h>
#include <app/services.h>

#include "systemvariables.h"

namespace {

class EditSystemModule : public OdRxModuleBase {
  public:
    void initApp() override {
        auto variables = OdRxObjectImpl<vemoapp::SystemVariables>::createObject();
        vo_arbitDict_regservice(vosi::kEditSystemKey, variables);
        variables->addCommand();
    }
    void uninitApp() override {
        if (auto table = vemoapp::service<vemoapp::CommandTable>(vemoapp::kCommandTableKey)) {
            table->remove("SETVAR");
        }
        vo_arbitDict_clearservice(vosi::kEditSystemKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(EditSystemModule)
