// The commands of the application: every module adds its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <drawing/runtime.h>

namespace vemoapp {

/// One command. A module takes its commands out again before it ends.
struct Command {
    using Arguments = std::vector<std::string>;

    std::string name;       // upper case
    std::string arguments;  // as HELP shows them, "path [hint]"
    std::string help;       // one line
    /// What it raises is shown to the user and ends the command alone.
    std::function<void(const Arguments&)> run;
};

/// "App/Commands".
class CommandTable : public OdRxObject {
  public:
    /// Adds a command; one of the same name is replaced.
    virtual void add(const Command& command) = 0;
    virtual void remove(const std::string& name) = 0;
    /// All commands, by name.
    virtual std::vector<Command> commands() const = 0;

    /// Runs a line: a command's name or alias in any case, then its arguments; double quotes keep
    /// blanks together. What is no command is answered with a message.
    virtual void runLine(const std::string& line) = 0;
};

}  // namespace vemoapp
