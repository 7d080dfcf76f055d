#include "hiddeninput.h"

namespace vemoapp {

HiddenInput::HiddenInput(int terminal) : file(terminal) {
    if (tcgetattr(file, &before) != 0) {
        return;
    }
    termios silent = before;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
    // What was typed before the question is no answer to it.
    hidden = tcsetattr(file, TCSAFLUSH, &silent) == 0;
}

HiddenInput::~HiddenInput() {
    if (hidden) {
        tcsetattr(file, TCSAFLUSH, &before);
    }
}

}  // namespace vemoapp
