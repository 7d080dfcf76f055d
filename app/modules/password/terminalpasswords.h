// Asks for passwords on the terminal.
#pragma once

#include <app/passwordservice.h>

namespace vemoapp {

/// An empty line, or the end of the input, is no password. Input that doesn't come from a terminal
/// is taken line by line, as commands are.
class TerminalPasswords : public PasswordService {
  public:
    bool getPassword(const OdString& drawing, bool isXref, OdPassword& password) override;
};

}  // namespace vemoapp
