// Loads another module while it comes up itself, and unloads it while it ends.
#include "tracingmodule.h"

namespace {

class LeaningModule : public TracingModule {
  public:
    LeaningModule() : TracingModule(L"leaning") {}

    void initApp() override {
        odrxDynamicLinker()->loadModule(L"drawing_good", false);
        odrxDynamicLinker()->loadModule(moduleName(), false);
        TracingModule::initApp();
    }
    void uninitApp() override {
        TracingModule::uninitApp();
        odrxDynamicLinker()->unloadModule(moduleName());
        odrxDynamicLinker()->unloadModule(L"drawing_good");
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(LeaningModule)
