#include "application.h"

#include <cstdlib>
#include <stdexcept>

void liveIn(const TestFolder& folder) {
    setenv("HOME", folder.folder("home").c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder.folder("home/config").c_str(), 1);
    setenv("XDG_DATA_HOME", folder.folder("home/share").c_str(), 1);
    setenv("XDG_DATA_DIRS", folder.folder("share").c_str(), 1);
    setenv("LC_ALL", "C", 1);
}

BareApplication::BareApplication() {
    liveIn(home);
    home.file("bin/vemo.json", R"({"Core": {"OdaLibrary": [], "CoreLibrary": [], "Library": []}})");
    std::string executable = home.path("bin/vemocad");
    char* arguments[] = {executable.data(), nullptr};
    if (vemo_root(arguments, 1, this) != kVemoNoMainWindow) {
        throw std::runtime_error("the library didn't come up");
    }
}

BareApplication::~BareApplication() {
    vemo_exit(this);
}
