// A module that notes which parts of the application stand at its beginning and at its end; built
// under two names.
#include <global/importedclasses.h>

#include "core/voservicekeys.h"
#include "testmodule.h"

namespace {

std::string standing() {
    std::string parts;
    const auto look = [&](const char* part, bool stands) {
        parts += stands ? std::string(" ") + part : "";
    };
    look("dispatcher", odrxSysRegistry()->has(vosi::kRxEventKey));
    look("trees", !vo_sys_config("").isNull());
    look("Core/Fiber", !vo_arbitDict_getservice(vosi::kFiberKey).isNull());
    look("Core/FiberCoroutine", !vo_arbitDict_getservice(vosi::kFiberCoroutineKey).isNull());
    look("Core/FindFonts", !vo_arbitDict_getservice(vosi::kFindFontsKey).isNull());
    look("dialogs", vosi::core_ui_dlg_is_initialized());
    look("classes", vosi::VosiApView::desc() && vosi::VosiSubCommandRealRequest::desc() &&
                        vosi::HdiRxModule::desc());
    look("any class", vosi::VosiApView::desc() || vosi::VosiSubCommandRealRequest::desc() ||
                          vosi::HdiRxModule::desc());
    return parts;
}

class Witness : public OdRxModuleBase {
  public:
    void initApp() override { note(utf8(moduleName()) + " begins:" + standing()); }
    void uninitApp() override { note(utf8(moduleName()) + " ends:" + standing()); }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Witness)
