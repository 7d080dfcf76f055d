#include <drawing/runtime.h>

#include "inspected.h"

namespace {

const inspected::Witness witness;

class GoodModule : public OdRxModuleBase {
  public:
    void initApp() override { area = inspected::geometry::area(area); }
    void uninitApp() override {}

  private:
    double area = 2;
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(GoodModule)
