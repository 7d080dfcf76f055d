#include "tracingmodule.h"

namespace {

class FailingEndModule : public TracingModule {
  public:
    FailingEndModule() : TracingModule(L"failing") {}

    void uninitApp() override { throw OdError(eNoInterface, L"on purpose"); }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(FailingEndModule)
