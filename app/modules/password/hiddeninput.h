// A terminal that doesn't show what is typed.
#pragma once

#include <termios.h>

namespace vemoapp {

/// While it lives, the terminal on the file doesn't echo, and no key interrupts the process, which
/// would leave the terminal so. A file that is no terminal is left alone.
class HiddenInput {
  public:
    explicit HiddenInput(int terminal);
    ~HiddenInput();
    HiddenInput(const HiddenInput&) = delete;
    HiddenInput& operator=(const HiddenInput&) = delete;

  private:
    int file;
    termios before{};
    bool hidden = false;
};

}  // namespace vemoapp
