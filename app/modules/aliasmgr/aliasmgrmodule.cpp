// The alias manager's module.
#include <app/services.h>

#include "aliasmanager.h"

namespace vemoapp {

namespace {

class AliasMgrModule : public OdRxModuleBase {
  public:
    void initApp() override {
        OdSmartPtr<AliasResolver> aliases = OdRxObjectImpl<AliasManager>::createObject();
        vo_arbitDict_regservice(vosi::kAliasMgrKey, aliases);
        vo_arbitDict_regservice(kAliasResolverKey, aliases);
    }
    void uninitApp() override {
        vo_arbitDict_clearservice(kAliasResolverKey);
        vo_arbitDict_clearservice(vosi::kAliasMgrKey);
    }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::AliasMgrModule)
