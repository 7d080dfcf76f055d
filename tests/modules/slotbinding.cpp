// A module like any other, linked to the library's shared object. It registers itself as a service,
// notes what it reads, and shows which functions it is bound to.
#include "slotbinding.h"

#include "testjournal.h"

namespace {

class Binding : public OdRxModuleBase {
  public:
    void initApp() override {
        vo_arbitDict_regservice(L"Test/Binding", OdRxObjectPtr(this));
        const VoJsonPtr path = vo_runtime_config("ExeRootPath");
        journal::append("ExeRootPath " + (path ? path->strValue().str() : "nowhere"));
    }
    void uninitApp() override { vo_arbitDict_clearservice(L"Test/Binding"); }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Binding)

extern "C" __attribute__((visibility("default"))) void bindingFunctions(
    std::vector<void*>& functions);
extern "C" void bindingFunctions(std::vector<void*>& functions) {
    functions = exportedFunctions();
}
