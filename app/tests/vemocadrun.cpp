#include "vemocadrun.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
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

// What has to stand in front of a program for another machine, empty for one of this machine.
std::vector<std::string> emulatorWords() {
    const char* emulator = std::getenv("VEMO_TEST_EMULATOR");
    std::istringstream words(emulator ? emulator : "");
    return {std::istream_iterator<std::string>(words), {}};
}

// The exit status, or 128 and the signal that ended it.
int statusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// False when nothing more comes: the program has ended, or hangs.
bool readMore(int terminal, std::string& output) {
    constexpr int patience = 60'000;
    pollfd waiting{terminal, POLLIN, 0};
    char bytes[512];
    const ssize_t count =
        poll(&waiting, 1, patience) == 1 ? ::read(terminal, bytes, sizeof bytes) : 0;
    output.append(bytes, count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

// Reads on until the text has come behind what was seen before.
bool readUntil(int terminal, const std::string& text, std::size_t& seen, std::string& output) {
    std::size_t at = output.find(text, seen);
    while (at == std::string::npos && readMore(terminal, output)) {
        at = output.find(text, seen);
    }
    seen = at == std::string::npos ? seen : at + text.size();
    return at != std::string::npos;
}

}  // namespace

std::string readFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

VemocadRun::VemocadRun(std::string programName)
    : program(std::move(programName)), application(builtApplication()) {
    std::string name = (fs::temp_directory_path() / "vemocad-test-XXXXXX").string();
    folder = mkdtemp(name.data());
    configHome = path("config");
    fs::create_directory(path("home"));
    fs::create_directory(path("tmp"));
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

void VemocadRun::execute(const std::vector<std::string>& arguments) const {
    const std::string executable = (application / program).string();
    std::vector<std::string> words = emulatorWords();
    const std::string file = words.empty() ? executable : words.front();
    words.push_back(words.empty() ? program : executable);
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("HOME", path("home").c_str(), 1);
    setenv("TMPDIR", path("tmp").c_str(), 1);
    setenv("XDG_CONFIG_HOME", configHome.c_str(), 1);
    setenv("XDG_DATA_DIRS", path("share").c_str(), 1);
    unsetenv("XDG_DATA_HOME");
    if (chdir(folder.c_str()) == 0) {
        execvp(file.c_str(), pointers.data());
    }
    _exit(127);
}

RunResult VemocadRun::run(const std::vector<std::string>& arguments,
                          const std::string& input) const {
    write("input", input);
    const pid_t child = fork();
    if (child == 0) {
        redirect(path("input"), O_RDONLY, STDIN_FILENO);
        redirect(path("output"), O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        redirect(path("errors"), O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        execute(arguments);
    }
    return {statusOf(child), read("output"), read("errors")};
}

RunResult VemocadRun::runOnTerminal(const std::vector<TerminalStep>& steps) const {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execute({});
    }
    std::string output;
    std::size_t seen = 0;
    for (const TerminalStep& step : steps) {
        if (!readUntil(terminal, step.prompt, seen, output)) {
            kill(child, SIGKILL);
            break;
        }
        const std::string line = step.answer + "\n";
        if (::write(terminal, line.data(), line.size()) < 0) {
            break;
        }
    }
    while (readMore(terminal, output)) {
    }
    close(terminal);
    return {statusOf(child), output, ""};
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
