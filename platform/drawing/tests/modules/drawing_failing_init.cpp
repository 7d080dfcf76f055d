#include "tracingmodule.h"

namespace {

class FailingInitModule : public TracingModule {
  public:
    FailingInitModule() : TracingModule(L"failing") {}

    void initApp() override { throw OdError(eNoInterface, L"on purpose"); }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(FailingInitModule)
