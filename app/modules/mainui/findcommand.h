// The command FIND: where a support file or a font is found.
#pragma once

#include <app/commandtable.h>

namespace vemoapp {

void addFindCommand(CommandTable& table);

}  // namespace vemoapp
