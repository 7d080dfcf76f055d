// A module that is there and does nothing.
#include <drawing/runtime.h>

namespace {

class SmallModule : public OdRxModuleBase {
  public:
    void initApp() override {}
    void uninitApp() override {}
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(SmallModule)
