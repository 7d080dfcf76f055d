#include "say.h"

#include <app/commandwindow.h>
#include <app/services.h>

namespace vemoapp {

void say(const std::string& line) {
    if (auto window = service<CommandWindow>(kCommandWindowKey)) {
        window->print(line);
    }
}

}  // namespace vemoapp
