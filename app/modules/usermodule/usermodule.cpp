// A user's module, as the list User/Library names them: it comes after the main window and adds a
// command of its own. Copy it to begin another.
#include <ctime>
#include <string>

#include <app/commandtable.h>
#include <app/services.h>

#include "say.h"

namespace vemoapp {

namespace {

constexpr const char* kCommandName = "ABOUT";

void about(const Command::Arguments&) {
    std::time_t built = vo_build_timestamp();
    std::tm time{};
    char text[32] = "";
    gmtime_r(&built, &time);
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &time);
    VoJsonPtr package = vo_runtime_config("packageName");
    say((package ? package->strValue().str() : std::string("unnamed")) + ", built " + text);
}

class UserModule : public OdRxModuleBase {
  public:
    void initApp() override {
        if (auto table = service<CommandTable>(kCommandTableKey)) {
            table->add({kCommandName, "", "tells the package and its build", about});
            say("User module: the command ABOUT was added.");
        }
    }
    void uninitApp() override {
        if (auto table = service<CommandTable>(kCommandTableKey)) {
            table->remove(kCommandName);
        }
    }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::UserModule)
