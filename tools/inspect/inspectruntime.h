// The drawing runtime with the application's services on it, for subcommands that need no more.
#pragma once

#include "voappservice.h"

namespace inspect {

class InspectRuntime {
  public:
    InspectRuntime() { odInitialize(&service); }
    ~InspectRuntime() { odUninitialize(); }
    InspectRuntime(const InspectRuntime&) = delete;
    InspectRuntime& operator=(const InspectRuntime&) = delete;

  private:
    OdStaticRxObject<VoAppService> service;
};

}  // namespace inspect
