// The modeler's module: names the class to the drawing runtime, and adds a command that hands a
// builder to it through the host.
#include <charconv>

#include <app/commandtable.h>
#include <app/services.h>

#include "samplemodeler.h"
#include "say.h"

namespace vemoapp {

namespace {

constexpr const char* kCommandName = "MODELER";
constexpr const OdChar* kCreatorKey = L"OdModelerGeometryCreator";

void modelerCommand(const Command::Arguments& arguments) {
    std::uint32_t type = 0;
    const std::string text = arguments.size() == 1 ? arguments[0] : "";
    const char* end = text.data() + text.size();
    if (const auto read = std::from_chars(text.data(), end, type);
        text.empty() || read.ec != std::errc() || read.ptr != end) {
        say("MODELER type; types are 1 region, 2 solid, 3 body, 4 surface.");
        return;
    }
    const OdRxObjectPtr builder = OdRxObjectImpl<OdRxObject>::createObject();
    const OdResult result = vodbSystemServices()->initializeModelerBuilder(builder.get(), type);
    const OdString name =
        odrxSystemServices()->formatMessage(static_cast<unsigned int>(result), nullptr);
    say("The modeler answers " + OdStringToUtf8String(name).str());
}

class ModelerModule : public OdRxModuleBase {
  public:
    void initApp() override {
        SampleModeler::rxInit();
        odrxServiceDictionary()->putAt(kCreatorKey, SampleModeler::desc());
        if (auto table = service<CommandTable>(kCommandTableKey)) {
            table->add({kCommandName, "type", "makes a geometry builder fit for a kind of entity",
                        modelerCommand});
        }
    }
    void uninitApp() override {
        if (auto table = service<CommandTable>(kCommandTableKey)) {
            table->remove(kCommandName);
        }
        odrxServiceDictionary()->remove(kCreatorKey);
        SampleModeler::rxUninit();
    }
};

}  // namespace

}  // namespace vemoapp

ODRX_DEFINE_DYNAMIC_MODULE(vemoapp::ModelerModule)
