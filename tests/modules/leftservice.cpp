// A module that leaves a service in the dictionary when it goes.
#include "testmodule.h"

namespace {

class Leftover : public OdRxObject {
  public:
    ~Leftover() override {
        note(odrxSystemServices() ? "left service released, runtime up"
                                  : "left service released, runtime gone");
    }
};

class LeftService : public NotingModule {
  public:
    void initApp() override {
        NotingModule::initApp();
        vo_arbitDict_regservice(L"Test/Leftover", OdRxObjectImpl<Leftover>::createObject());
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(LeftService)
