// The document manager's module.
#include <app/services.h>

#include "documentmanager.h"

namespace vemoapp {

namespace {

class DocMgrModule : public OdRxModuleBase {
  public:
    void initApp() override {
        vo_arbitDict_regservice(vosi::kDocMgrKey, OdRxObjectImpl<DocumentManager>::createObject());
    }
    void uninitApp() override { vo_arbitDict_clearservice(vosi::kDocMgrKey); }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::DocMgrModule)
