// The main window: a text window on the terminal.
#pragma once

#include <app/commandwindow.h>

namespace vemoapp {

/// Reads standard input and writes standard output. A person at a terminal gets a prompt; commands
/// out of a pipe are shown as they are run. Interface thread.
class TerminalWindow : public CommandWindow {
  public:
    /// Adds the commands HELP and QUIT.
    std::int32_t showMainWindow() override;
    void print(const OdAnsiString& line) override;
    void runCommandLoop() override;
    void quit() override { quitting = true; }

  private:
    void addCommands();
    void post(const std::string& line);

    bool quitting = false;
};

}  // namespace vemoapp
