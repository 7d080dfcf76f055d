// The two halves of remote debugging.
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "testmodule.h"

namespace {

int handle = 0;

class Stub : public vosi::VosiRemoteDebugStub {
  public:
    void* stubHandle() override { return &handle; }
};

class Server : public vosi::VosiRemoteDebugSvr {
  public:
    void attachStub(void* stubHandle) override {
        note(stubHandle == &handle ? "attachStub" : "attachStub with another handle");
    }
};

class RemoteDebug : public ServiceModule {
  public:
    void initApp() override {
        ServiceModule::initApp();
        provide<Stub>(vosi::kRemoteDebugStubKey);
        provide<Server>(vosi::kRemoteDebugSvrKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(RemoteDebug)
