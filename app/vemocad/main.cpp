// The reference application: starts the library, runs the main window's command loop, ends.
#include <algorithm>
#include <clocale>
#include <csignal>
#include <filesystem>
#include <iostream>

#include <app/commandwindow.h>
#include <app/services.h>
#include <core/vemo_root.h>

#include "appcallback.h"
#include "startfailure.h"

namespace vemoapp {

namespace {

void complain(const std::string& text) {
    std::cerr << "vemocad: " << text << std::endl;
}

// Runs one stage of the application's life: its result, or what it raised told to the user.
template <class Stage>
int guarded(Stage stage) {
    try {
        return stage();
    } catch (const OdError& error) {
        complain(OdStringToUtf8String(error.description()).str());
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return EXIT_FAILURE;
}

int run(std::vector<char*>& arguments, VoMainAppCallback& callback) {
    int result = vemo_root(arguments.data(), static_cast<int>(arguments.size()) - 1, &callback);
    if (result != 0) {
        complain(startFailure(result));
        return EXIT_FAILURE;
    }
    if (auto window = service<CommandWindow>(kCommandWindowKey)) {
        window->runCommandLoop();
    }
    return EXIT_SUCCESS;
}

// The library takes the executable's folder from the first argument.
std::string executablePath(const char* asCalled) {
    std::error_code failure;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", failure).string();
    return failure ? asCalled : path;
}

}  // namespace

}  // namespace vemoapp

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    // Files and messages write numbers with a point.
    std::setlocale(LC_NUMERIC, "C");
    // A reader of our output that goes away must not keep the user's settings from being saved.
    std::signal(SIGPIPE, SIG_IGN);

    std::string executable = vemoapp::executablePath(argc > 0 ? argv[0] : "");
    std::vector<char*> arguments(argv, argv + argc);
    arguments.resize(std::max<std::size_t>(arguments.size(), 1));
    arguments[0] = executable.data();
    vemoapp::AppCallback callback(vemoapp::configFilesOf(arguments));
    arguments.push_back(nullptr);

    int status = vemoapp::guarded([&] { return vemoapp::run(arguments, callback); });
    int ended = vemoapp::guarded([&] { return vemo_exit(&callback); });
    return status == EXIT_SUCCESS && ended == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
