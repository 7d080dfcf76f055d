// A main program: starts the application, uses a service of one of its modules, ends it.
#include <core/vemo_root.h>
#include <core/vemoversion.h>
#include <core/voexports.h>

#include <filesystem>
#include <iostream>

#include "greeting.h"

namespace {

// Keeps everything in the program's own folder.
class Callback : public VoMainAppCallback {
  public:
    explicit Callback(const std::string& programFolder) : folder(programFolder) {}

    void initialize() override {
        odrxDynamicLinker()->addModuleFolder(OdUtf8StringToOdString(folder));
    }
    void uninitialize() override {}
    OdAnsiString queryAppDataPath() override { return folder; }
    OdAnsiString querySysFontPath() override { return "/usr/share/fonts"; }
    OdAnsiString queryTempPath() override { return folder; }
    OdAnsiString queryDocumentPath() override { return folder; }

  private:
    OdAnsiString folder;
};

bool greet() {
    const OdSmartPtr<Greeting> greeting(vo_arbitDict_getservice(kGreetingKey));
    if (!greeting) {
        return false;
    }
    std::cout << OdStringToUtf8String(greeting->greet(L"author")).str() << " Built with "
              << VEMO_VERSION_MAJOR << '.' << VEMO_VERSION_MINOR << '.' << VEMO_VERSION_PATCH
              << std::endl;
    return true;
}

}  // namespace

int main() {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    std::string path = program.string();
    char* arguments[] = {path.data(), nullptr};
    Callback callback(program.parent_path().string());

    bool greeted = false;
    try {
        const int result = vemo_root(arguments, 1, &callback);
        greeted = result == 0 && greet();
        if (result != 0) {
            std::cerr << "The application didn't start: " << result << std::endl;
        }
    } catch (const OdError& error) {
        std::cerr << OdStringToUtf8String(error.description()).str() << std::endl;
    }
    return vemo_exit(&callback) == 0 && greeted ? 0 : 1;
}
