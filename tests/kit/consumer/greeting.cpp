// A module that registers one service.
#include "greeting.h"

#include <core/voexports.h>

namespace {

class PlainGreeting : public Greeting {
  public:
    OdString greet(const OdString& name) override { return L"Good day, " + name + L"."; }
};

class GreetingModule : public OdRxModuleBase {
  public:
    void initApp() override {
        vo_arbitDict_regservice(kGreetingKey, OdRxObjectImpl<PlainGreeting>::createObject());
    }
    void uninitApp() override { vo_arbitDict_clearservice(kGreetingKey); }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(GreetingModule)
