// Commands that show the application's insides: CONFIG, MODULES and SERVICES.
#pragma once

#include <app/commandtable.h>

namespace vemoapp {

void addInspectCommands(CommandTable& table);

}  // namespace vemoapp
