// The module of slots: built apart from the kernel library, of which it includes nothing.
// Everything it calls and everything it provides is declared here anew, by position.
#include "slotlibrary.h"
#include "slotservices.h"
#include "slottreenode.h"

namespace {

class SlotModule : public OdRxModuleBase {
  public:
    void initApp() override {
        slots::registerServices();
        slots::provideNodes();
    }
    void uninitApp() override {}
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(SlotModule)
