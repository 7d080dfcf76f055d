// The command FONTS: the fonts that the last scan found.
#pragma once

#include <app/commandtable.h>

namespace vemoapp {

void addFontsCommand(CommandTable& table);

}  // namespace vemoapp
