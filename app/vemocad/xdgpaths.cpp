#include "xdgpaths.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <pwd.h>
#include <unistd.h>

namespace vemoapp {

namespace {

constexpr std::string_view kHomeVariable = "$HOME";

std::string absoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    return value && *value == '/' ? value : "";
}

// The value of NAME="VALUE", with "$HOME" at its head replaced and a "\" before a character
// dropped; empty for any other line.
std::string folderInLine(const std::string& line, std::string_view name) {
    std::string opening = std::string(name) + "=\"";
    std::size_t close = line.rfind('"');
    if (!line.starts_with(opening) || close < opening.size()) {
        return {};
    }
    std::string folder;
    for (std::size_t index = opening.size(); index < close; ++index) {
        index += line[index] == '\\' ? 1U : 0U;
        folder.push_back(line[index]);
    }
    if (folder.starts_with(kHomeVariable)) {
        folder.replace(0, kHomeVariable.size(), homeFolder());
    }
    return folder;
}

std::string namedDocumentFolder() {
    std::ifstream file(configHome() + "/user-dirs.dirs");
    std::string folder;
    for (std::string line; std::getline(file, line);) {
        std::string named = folderInLine(line, "XDG_DOCUMENTS_DIR");
        folder = named.starts_with('/') ? named : folder;
    }
    return folder;
}

}  // namespace

std::string homeFolder() {
    std::string home = absoluteVariable("HOME");
    if (!home.empty()) {
        return home;
    }
    const passwd* user = getpwuid(getuid());
    return user && user->pw_dir && *user->pw_dir == '/' ? user->pw_dir : "/";
}

std::string configHome() {
    std::string folder = absoluteVariable("XDG_CONFIG_HOME");
    return folder.empty() ? homeFolder() + "/.config" : folder;
}

std::string tempFolder() {
    std::string folder = absoluteVariable("TMPDIR");
    return folder.empty() ? "/tmp" : folder;
}

std::string documentFolder() {
    std::error_code failure;
    for (const std::string& folder : {namedDocumentFolder(), homeFolder() + "/Documents"}) {
        if (std::filesystem::is_directory(folder, failure)) {
            return folder;
        }
    }
    return homeFolder();
}

}  // namespace vemoapp
