// A module whose beginning raises.
#include "testmodule.h"

namespace {

class Raiser : public OdRxModuleBase {
  public:
    void initApp() override { throw OdError(L"no licence for this module"); }
    void uninitApp() override { note("end of a module that never began"); }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Raiser)
