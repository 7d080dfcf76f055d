// The drawing runtime, up while the object lives.
#pragma once

#include <drawing/runtime.h>

class Runtime {
  public:
    Runtime() { odInitialize(&services); }
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;
    ~Runtime() { odUninitialize(); }

  private:
    OdStaticRxObject<ExSystemServices> services;
};
