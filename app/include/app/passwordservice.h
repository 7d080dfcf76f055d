// The password service as the library calls it: by position, its first own operation.
#pragma once

#include <drawing/runtime.h>

namespace vemoapp {

/// "Core/GetPasswordServer".
class PasswordService : public OdRxObject {
  public:
    /// Asks the user for the password of a drawing, which may be opened as an external reference.
    /// True when one was supplied; otherwise `password` is unchanged.
    virtual bool getPassword(const OdString& drawing, bool isXref, OdPassword& password) = 0;
};

}  // namespace vemoapp
