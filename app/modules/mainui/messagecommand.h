// The command MESSAGE: texts of result and message codes.
#pragma once

#include <app/commandtable.h>

namespace vemoapp {

void addMessageCommand(CommandTable& table);

}  // namespace vemoapp
