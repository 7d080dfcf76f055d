#include "bootrun.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include <core/vemo_root.h>
#include <core/vocommandline.h>
#include <core/voexports.h>
#include <utils/paths.h>

#include "scratchfolder.h"
#include "treehelpers.h"
#include "voappservice.h"
#include "xdgpaths.h"

namespace inspect {

namespace {

namespace fs = std::filesystem;

// The folder that an option names. A run gets it whole: what it is handed on to may take a relative
// path for something else.
std::optional<std::string> folderOf(const Arguments& arguments, const char* option) {
    const std::optional<std::string> given = arguments.value(option);
    if (!given) {
        return std::nullopt;
    }
    if (given->empty()) {
        throw UsageError(std::string("The option ") + option + " takes the name of a folder.");
    }
    return fs::absolute(*given).lexically_normal().string();
}

// While it lives, what is printed goes to standard error: standard output is the answer's.
class OutputAside {
  public:
    OutputAside() {
        flush();
        kept = dup(STDOUT_FILENO);
        dup2(STDERR_FILENO, STDOUT_FILENO);
    }
    ~OutputAside() {
        flush();
        dup2(kept, STDOUT_FILENO);
        close(kept);
    }
    OutputAside(const OutputAside&) = delete;
    OutputAside& operator=(const OutputAside&) = delete;

  private:
    static void flush() {
        std::cout.flush();
        std::fflush(stdout);
    }
    int kept = -1;
};

/// The main program's part.
class InspectedProgram : public VoMainAppCallback {
  public:
    InspectedProgram(const BootFolders& given, const std::string& appDataFolder)
        : folders(given), appData(appDataFolder) {}

    void initialize() override {
        // The usage text, which ends the process before this, belongs to standard output.
        aside.emplace();
        const OdAnsiString beside =
            voutCombinePath(vo_runtime_config("ExeRootPath")->strValue(), "modules");
        odrxDynamicLinker()->addModuleFolder(
            OdUtf8StringToOdString(folders.modules ? OdAnsiString(*folders.modules) : beside));
    }
    void uninitialize() override {}
    OdAnsiString queryAppDataPath() override { return appData; }
    OdAnsiString querySysFontPath() override { return folders.systemFonts.value_or(""); }
    OdAnsiString queryTempPath() override { return folders.temp.value_or(vemoapp::tempFolder()); }
    OdAnsiString queryDocumentPath() override {
        return folders.documents.value_or(vemoapp::documentFolder());
    }

    void restoreOutput() { aside.reset(); }

  private:
    BootFolders folders;
    std::string appData;
    std::optional<OutputAside> aside;
};

std::string textOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string wordsOf(const std::exception_ptr& fault) {
    try {
        std::rethrow_exception(fault);
    } catch (const OdError& error) {
        return OdStringToUtf8String(error.description()).str();
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "an exception of an unknown kind";
    }
}

template <class Stage>
void guarded(RunRecord& record, Stage&& stage) {
    try {
        stage();
    } catch (...) {
        record.error += (record.error.empty() ? "" : "; ") + wordsOf(std::current_exception());
    }
}

fs::path ownAppData() {
    return fs::path(vemoapp::configHome()) / "vemocad";
}

// The words as main programs have them; they stay where they are.
std::vector<char*> pointersTo(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// The argument of "-u" in the command line, as part of one of the words.
struct UserFileWord {
    std::string* word = nullptr;
    std::size_t at = 0;
};

UserFileWord findUserFile(std::vector<std::string>& words) {
    std::vector<char*> pointers = pointersTo(words);
    UserFileWord found;
    optind = 0;
    opterr = 0;
    const int count = static_cast<int>(words.size());
    for (int option = 0; option != -1;) {
        option =
            getopt_long(count, pointers.data(), vemo::kShortOptions, vemo::kLongOptions, nullptr);
        for (std::string& word : words) {
            if (option == 'u' && optarg >= word.data() && optarg <= word.data() + word.size()) {
                found = {&word, static_cast<std::size_t>(optarg - word.data())};
            }
        }
    }
    opterr = 1;
    return found;
}

// The path that a run makes of the one in its command line, with the user's own folders for its
// variables.
std::string evaluated(const std::string& path, const std::string& executable,
                      InspectedProgram& program) {
    if (path.find("%LANGUAGE%") != std::string::npos) {
        throw Failure("Only the run knows its language: name the user file without %LANGUAGE%.");
    }
    const VoJsonPtr runtime = tree::newObject();
    const auto set = [&](const char* key, const OdAnsiString& folder) {
        runtime->set_propertys(key, folder, false);
    };
    set("ExeRootPath", fs::path(executable).parent_path().string());
    set("AppDataPath", ownAppData().string());
    set("DocumentPath", program.queryDocumentPath());
    set("TempPath", program.queryTempPath());
    set("SysFontPath", program.querySysFontPath());
    const VoJsonPtr root = tree::newObject();
    root->set_propertyJ("Runtime", runtime);
    return vosiutEvaluatePath(OdAnsiString(path), root).str();
}

// A run may write its user file, and what it looks at must not change.
void useCopyOfUserFile(std::vector<std::string>& words, const std::string& scratch,
                       InspectedProgram& program) {
    const fs::path inScratch = fs::path(scratch) / "user.json";
    fs::path source = ownAppData() / "user.json";
    if (const UserFileWord named = findUserFile(words); named.word) {
        source = evaluated(named.word->substr(named.at), words.front(), program);
        named.word->replace(named.at, std::string::npos, inScratch.string());
    }
    std::error_code missing;
    fs::copy_file(source, inScratch, missing);
}

void useSystemFonts(const BootFolders& folders) {
    OdStringArray list;
    if (folders.systemFonts) {
        list.append(OdUtf8StringToOdString(OdAnsiString(*folders.systemFonts)));
    }
    odSetSystemFontFolders(list);
}

}  // namespace

OptionTable bootOptions() {
    return {.flags = {"--json"},
            .values = {"--appdata", "--documents", "--temp", "--sysfonts", "--modules"}};
}

BootFolders bootFolders(const Arguments& arguments) {
    return {.appData = folderOf(arguments, "--appdata"),
            .documents = folderOf(arguments, "--documents"),
            .temp = folderOf(arguments, "--temp"),
            .systemFonts = folderOf(arguments, "--sysfonts"),
            .modules = folderOf(arguments, "--modules")};
}

RunRecord bootAndExit(const BootFolders& folders, const std::vector<std::string>& commandLine,
                      const std::function<void(RunRecorder&)>& whenUp) {
    if (commandLine.empty()) {
        throw UsageError("The command line of the run is missing: -- ARGV0 [ARG...]");
    }
    std::vector<std::string> words = commandLine;
    // A command line that asks for the usage text ends the process, and the folder goes then too.
    static std::optional<ScratchFolder> scratch;
    if (!folders.appData) {
        scratch.emplace();
    }
    InspectedProgram program(folders, scratch ? scratch->path() : *folders.appData);
    if (scratch) {
        useCopyOfUserFile(words, scratch->path(), program);
    }
    useSystemFonts(folders);

    std::vector<char*> pointers = pointersTo(words);

    RunRecord record;
    record.commandLine = commandLine;
    std::string userFile;
    {
        RunRecorder recorder(record);
        guarded(record, [&] {
            record.result = vemo_root(pointers.data(), static_cast<int>(words.size()), &program);
        });
        recorder.takeState();
        userFile = vosiutEvaluatePath(OdAnsiString(record.userPath), vo_sys_config("")).str();
        if (record.result && whenUp) {
            guarded(record, [&] { whenUp(recorder); });
        }
        if (g_appService) {
            guarded(record, [&] { vemo_exit(&program); });
        }
    }
    program.restoreOutput();
    record.userFile = textOf(userFile);
    return record;
}

}  // namespace inspect
