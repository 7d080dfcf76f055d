// The system variables' module.
#include <app/commandtable.h>
#include <app/services.h>

#include "systemvariables.h"

namespace vemoapp {

namespace {

class EditSystemModule : public OdRxModuleBase {
  public:
    void initApp() override {
        auto variables = OdRxObjectImpl<SystemVariables>::createObject();
        vo_arbitDict_regservice(vosi::kEditSystemKey, variables);
        variables->addCommand();
    }
    void uninitApp() override {
        if (auto table = service<CommandTable>(kCommandTableKey)) {
            table->remove("SETVAR");
        }
        vo_arbitDict_clearservice(vosi::kEditSystemKey);
    }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::EditSystemModule)
