#include "tracingmodule.h"

namespace {

class GoodModule : public TracingModule {
  public:
    GoodModule() : TracingModule(L"good") {}
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(GoodModule)
