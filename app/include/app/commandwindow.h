// The main window as the rest of the application sees it: a text window with a command line.
#pragma once

#include <core/vomoduleservices.h>

namespace vemoapp {

/// "App/CommandWindow", and under "Vemo/MainUI" as the library knows it.
class CommandWindow : public vosi::VosiMainUISvr {
  public:
    /// Shows one line of UTF-8 text. Control characters are shown as "?", so that text out of a
    /// drawing can't steer the terminal.
    virtual void print(const OdAnsiString& line) = 0;

    /// Reads commands and has them run until one of them quits or the input ends.
    virtual void runCommandLoop() = 0;

    /// Ends the command loop, also one that hasn't begun yet.
    virtual void quit() = 0;
};

}  // namespace vemoapp
