// The command alias service.
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "testmodule.h"

namespace {

class AliasManager : public vosi::VosiAliasMgrSvr {
  public:
    void setAliasFile(const OdString& fileName) override { note("setAliasFile " + utf8(fileName)); }
    void loadAliases() override { note("loadAliases"); }
};

class Aliases : public ServiceModule {
  public:
    void initApp() override {
        ServiceModule::initApp();
        provide<AliasManager>(vosi::kAliasMgrKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Aliases)
