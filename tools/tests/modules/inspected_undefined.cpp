// Uses what no library defines, and something that it can do without.
#include <drawing/runtime.h>

#include "inspected.h"

extern "C" __attribute__((weak)) void inspectedOptional();

namespace {

const inspected::Witness witness;

class UndefinedModule : public OdRxModuleBase {
  public:
    void initApp() override {
        if (inspectedOptional) {
            inspectedOptional();
        }
        volume = inspected::geometry::volume(1, "cm");
    }
    void uninitApp() override {}

  private:
    double volume = 0;
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(UndefinedModule)
