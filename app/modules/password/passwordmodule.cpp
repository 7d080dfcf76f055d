// The password service's module, with a command that walks the drawing runtime's road to it.
#include <app/commandtable.h>
#include <app/services.h>

#include "say.h"
#include "terminalpasswords.h"
#include "text.h"

namespace vemoapp {

namespace {

constexpr const char* kCommandName = "PASSWORD";

void askCommand(const Command::Arguments& arguments) {
    const bool isXref = arguments.size() == 2 && upperCase(arguments[1]) == "XREF";
    if (arguments.empty() || arguments.size() > 2 || (arguments.size() == 2 && !isXref)) {
        say("PASSWORD drawing [XREF]");
        return;
    }
    OdPassword password;
    const bool supplied =
        vodbSystemServices()->getPassword(OdUtf8StringToOdString(arguments[0]), isXref, password);
    say(supplied ? "A password was supplied." : "No password was supplied.");
}

class PasswordModule : public OdRxModuleBase {
  public:
    void initApp() override {
        vo_arbitDict_regservice(vosi::kGetPasswordKey,
                                OdRxObjectImpl<TerminalPasswords>::createObject());
        if (auto table = service<CommandTable>(kCommandTableKey)) {
            table->add({kCommandName, "drawing [XREF]",
                        "asks for a password as for a protected drawing", askCommand});
        }
    }
    void uninitApp() override {
        if (auto table = service<CommandTable>(kCommandTableKey)) {
            table->remove(kCommandName);
        }
        vo_arbitDict_clearservice(vosi::kGetPasswordKey);
    }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::PasswordModule)
