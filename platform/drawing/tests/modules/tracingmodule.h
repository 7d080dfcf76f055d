// What the test modules share: they tell of their life through the runtime's trace.
#pragma once

#include <drawing/runtime.h>

class TracingModule : public OdRxModuleBase {
  public:
    explicit TracingModule(const OdString& word) : name(word) {}

    void initApp() override { odTrace(name + L" init"); }
    void uninitApp() override { odTrace(name + L" end"); }

  private:
    OdString name;
};
