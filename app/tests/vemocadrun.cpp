#include "vemocadrun.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vemoapp {

namespace fs = std::filesystem;

namespace {

void redirect(const std::string& file, int mode, int descriptor) {
    int opened = open(file.c_str(), mode, 0600);
    dup2(opened, descriptor);
    close(opened);
}

}  // namespace

std::string readFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

VemocadRun::VemocadRun() : application(builtApplication()) {
    std::string name = (fs::temp_directory_path() / "vemocad-test-XXXXXX").string();
    folder = mkdtemp(name.data());
    configHome = path("config");
    fs::create_directory(path("home"));
}

VemocadRun::~VemocadRun() {
    fs::remove_all(folder);
}

fs::path VemocadRun::builtApplication() {
    return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "bin";
}

void VemocadRun::copyApplication() {
    application = folder / "bin";
    fs::copy(builtApplication(), application, fs::copy_options::recursive);
}

RunResult VemocadRun::run(const std::vector<std::string>& arguments,
                          const std::string& input) const {
    std::string executable = (application / "vemocad").string();
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), "vemocad");
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    write("input", input);
    pid_t child = fork();
    if (child == 0) {
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("HOME", path("home").c_str(), 1);
        setenv("XDG_CONFIG_HOME", configHome.c_str(), 1);
        setenv("XDG_DATA_DIRS", path("share").c_str(), 1);
        unsetenv("XDG_DATA_HOME");
        redirect(path("input"), O_RDONLY, STDIN_FILENO);
        redirect(path("output"), O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        redirect(path("errors"), O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        if (chdir(folder.c_str()) == 0) {
            execv(executable.c_str(), pointers.data());
        }
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return {code, read("output"), read("errors")};
}

std::string VemocadRun::write(const std::string& name, const std::string& text) const {
    fs::create_directories((folder / name).parent_path());
    std::ofstream(folder / name, std::ios::binary) << text;
    return path(name);
}

void VemocadRun::copyFile(const fs::path& source, const std::string& name) const {
    fs::create_directories((folder / name).parent_path());
    fs::copy_file(source, folder / name, fs::copy_options::overwrite_existing);
}

std::string VemocadRun::read(const std::string& name) const {
    return readFile(folder / name);
}

}  // namespace vemoapp
