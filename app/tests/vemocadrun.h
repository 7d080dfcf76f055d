// Runs the built vemocad, or another built program, as a person would, in folders of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vemoapp {

/// What one run left behind.
struct RunResult {
    int status = -1;  // the exit status, or 128 and the signal that ended it
    std::string output;
    std::string errors;
};

/// The content of a file, empty when there is none.
std::string readFile(const std::filesystem::path& file);

/// One step of a person at the terminal: a text to wait for, and the line to type then.
struct TerminalStep {
    std::string prompt;
    std::string answer;
};

/// A scratch folder with a home, a configuration home and a temporary folder "tmp", gone at the
/// end. The system's fonts are those in its "share/fonts". The executable stands in the build
/// folder beside the test's own.
class VemocadRun {
  public:
    explicit VemocadRun(std::string programName = "vemocad");
    ~VemocadRun();
    VemocadRun(const VemocadRun&) = delete;
    VemocadRun& operator=(const VemocadRun&) = delete;

    /// Starts the program in the scratch folder and waits for its end.
    RunResult run(const std::vector<std::string>& arguments, const std::string& input = "") const;

    /// The same on a terminal: types each answer when its prompt has come, and gives up on one that
    /// doesn't. The output is what a person would have seen, what was typed included.
    RunResult runOnTerminal(const std::vector<TerminalStep>& steps) const;

    /// Writes a file in the scratch folder and gives its path.
    std::string write(const std::string& name, const std::string& text) const;
    /// Copies a file from elsewhere into the scratch folder.
    void copyFile(const std::filesystem::path& source, const std::string& name) const;
    std::string read(const std::string& name) const;
    std::string path(const std::string& name) const { return (folder / name).string(); }

    /// Another folder for the user's configuration.
    void setConfigHome(const std::string& newFolder) { configHome = newFolder; }

    /// A copy of the application in the scratch folder, whose files a test may change; later runs
    /// use it.
    void copyApplication();

    static std::filesystem::path builtApplication();

  private:
    /// Becomes the program; for the child of a fork.
    [[noreturn]] void execute(const std::vector<std::string>& arguments) const;

    std::string program;
    std::filesystem::path folder;
    std::filesystem::path application;
    std::string configHome;
};

}  // namespace vemoapp
