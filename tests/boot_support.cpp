#include "boot_support.h"

#include <dlfcn.h>
#include <global/log.h>
#include <unistd.h>
#include <utils/vojson.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kUnitFolder = "../../../source/core/root/";

std::vector<std::string>& recordedLog() {
    static std::vector<std::string> lines;
    return lines;
}

bool exitExpected = false;

// While vemo_root runs the process must not end: the status of a usage request, 0, would pass for a
// test that passed.
class ExitGuard {
  public:
    ExitGuard() {
        [[maybe_unused]] static const int registered = std::atexit(failWhereInBoot);
        inBoot = true;
    }
    ExitGuard(const ExitGuard&) = delete;
    ExitGuard& operator=(const ExitGuard&) = delete;
    ~ExitGuard() { inBoot = false; }

  private:
    static void failWhereInBoot() {
        if (inBoot && !exitExpected) {
            std::fputs("vemo_root ended the process\n", stderr);
            ::_exit(EXIT_FAILURE);
        }
    }

    static inline bool inBoot = false;
};

template <class Function>
Function realFunction(const char* symbol) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

std::string moduleFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "modules";
}

}  // namespace

// The next two stand in front of the libraries' own functions, since a program's symbols come
// before those of its libraries.
void set_mempool_proc(OdAllocProc alloc, OdReallocProc realloc, OdFreeProc free) {
    note(odrxSystemServices() ? "pool set too late" : "pool set");
    using Set = void (*)(OdAllocProc, OdReallocProc, OdFreeProc);
    static const auto real = realFunction<Set>("_Z16set_mempool_procPFPvmEPFS_S_mmEPFvS_E");
    real(alloc, realloc, free);
}

void vo_Log(int level, int line, const char* file, const char* function, const char* text) {
    if (const std::string_view unit(file); unit.starts_with(kUnitFolder)) {
        recordedLog().push_back(std::to_string(level) + ' ' +
                                std::string(unit.substr(kUnitFolder.size())) + ' ' + function +
                                ' ' + text);
    }
    using Log = void (*)(int, int, const char*, const char*, const char*);
    static const auto real = realFunction<Log>("_Z6vo_LogiiPKcS0_S0_");
    real(level, line, file, function, text);
}

std::vector<std::string> libraryLog() {
    return recordedLog();
}

void clearLibraryLog() {
    recordedLog().clear();
}

std::string Config::text() const {
    return R"({"Core": {"OdaLibrary": )" + odaLibrary + R"(, "CoreLibrary": )" + coreLibrary +
           R"(, "Library": )" + library + furtherCore + R"(}, "User": )" + user + further + "}";
}

void MainProgram::initialize() {
    note("initialize");
    odrxDynamicLinker()->addModuleFolder(OdUtf8StringToOdString(moduleFolder()));
    onInitialize();
}

void MainProgram::uninitialize() {
    note("uninitialize");
    onUninitialize();
}

OdAnsiString MainProgram::answer(const std::string& what, const std::string& subfolder) {
    if (!std::exchange(asked, true)) {
        onFirstQuery();
    }
    note("query " + what);
    return folder.path(subfolder);
}

BootTest::BootTest() {
    for (const char* name : {"bin", "data", "temp", "fonts", "documents"}) {
        folder.folder(name);
    }
    // The system's font folders are the test's own: "share/fonts" and what stands beside it.
    setenv("HOME", folder.path("home").c_str(), 1);
    setenv("XDG_DATA_HOME", folder.path("home/share").c_str(), 1);
    setenv("XDG_DATA_DIRS", folder.path("share").c_str(), 1);
    configure({});
}

BootTest::~BootTest() {
    if (up) {
        vemo_exit(nullptr);
    }
}

int BootTest::boot(const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{folder.path("bin/vemocad")};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    argv.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    up = true;
    const ExitGuard guard;
    return vemo_root(argv.data(), static_cast<int>(texts.size()), &program);
}

void BootTest::expectExit() {
    exitExpected = true;
}

int BootTest::shutDown() {
    up = false;
    return vemo_exit(&program);
}

void BootTest::bootBare(const std::vector<std::string>& arguments) {
    configure({.coreLibrary = "[]"});
    ASSERT_EQ(boot(arguments), kVemoNoMainWindow);
}

OdSmartPtr<JournalReactor> JournalReactor::create(const std::string& name) {
    auto reactor = OdRxObjectImpl<JournalReactor>::createObject();
    reactor->name = name;
    return reactor;
}

void JournalReactor::hear(const std::string& event) {
    note(name + " hears " + event);
    then();
}

vosi::VosiApRxEventPtr dispatcher() {
    return odrxSysRegistry()->getAt(vosi::kRxEventKey);
}

std::vector<std::string> journalOf(std::initializer_list<std::string> beginnings) {
    std::vector<std::string> chosen;
    for (const std::string& line : journal::lines()) {
        for (const std::string& beginning : beginnings) {
            if (line.starts_with(beginning)) {
                chosen.push_back(line);
                break;
            }
        }
    }
    return chosen;
}

std::string json(const VoJsonPtr& node) {
    return node ? node->writeJson().str() : "null pointer";
}

std::string jsonOfFile(const std::string& path) {
    VoJson tree;
    tree.read(path, -1, nullptr);
    return json(tree);
}

VoJsonPtr textArray(std::initializer_list<std::string> texts) {
    VoJsonPtr array = ElementValue::createObject(kElementArray);
    for (const std::string& text : texts) {
        array->append(ElementValue::createObject(kElementText)->set_values(text));
    }
    return array;
}
