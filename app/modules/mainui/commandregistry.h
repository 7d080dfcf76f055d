// The table of commands.
#pragma once

#include <map>

#include <app/commandtable.h>

namespace vemoapp {

class CommandRegistry : public CommandTable {
  public:
    void add(const Command& command) override { byName[command.name] = command; }
    void remove(const std::string& name) override { byName.erase(name); }
    std::vector<Command> commands() const override;
    void runLine(const std::string& line) override;

  private:
    std::map<std::string, Command> byName;
};

}  // namespace vemoapp
