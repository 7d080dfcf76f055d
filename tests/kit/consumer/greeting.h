// A service of the example's own: what its key promises.
#pragma once

#include <drawing/runtime.h>

inline constexpr const OdChar* kGreetingKey = L"Example/Greeting";

class Greeting : public OdRxObject {
  public:
    /// A line for whoever is named. Called on the interface thread.
    virtual OdString greet(const OdString& name) = 0;
};
