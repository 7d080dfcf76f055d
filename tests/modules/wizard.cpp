// The new-drawing wizard.
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "testmodule.h"

namespace {

class OpenWizard : public vosi::VosiOpenWizard {
  public:
    int runWizard() override {
        note("runWizard");
        return 1;
    }
};

class Wizard : public ServiceModule {
  public:
    void initApp() override {
        ServiceModule::initApp();
        provide<OpenWizard>(vosi::kOpenWizardKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Wizard)
