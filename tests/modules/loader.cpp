// A module that at its beginning loads another one and saves the user's settings.
#include "testmodule.h"

namespace {

class Loader : public NotingModule {
  public:
    void initApp() override {
        NotingModule::initApp();
        voLoad_extModule(L"libalpha.so", true);
        vo_save_user_config("");
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Loader)
