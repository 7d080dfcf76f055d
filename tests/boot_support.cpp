#include "boot_support.h"

#include <dlfcn.h>
#include <global/log.h>
#include <utils/vojson.h>

#include <filesystem>
#include <string_view>

namespace {

constexpr std::string_view kUnitFolder = "../../../source/core/root/";

std::vector<std::string>& recordedLog() {
    static std::vector<std::string> lines;
    return lines;
}

std::string moduleFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "modules";
}

}  // namespace

// Stands in front of the log's own function, since a program's symbols come before its libraries'.
void vo_Log(int level, int line, const char* file, const char* function, const char* text) {
    if (const std::string_view unit(file); unit.starts_with(kUnitFolder)) {
        recordedLog().push_back(std::to_string(level) + ' ' +
                                std::string(unit.substr(kUnitFolder.size())) + ' ' + function +
                                ' ' + text);
    }
    using Log = void (*)(int, int, const char*, const char*, const char*);
    static const auto real = reinterpret_cast<Log>(dlsym(RTLD_NEXT, "_Z6vo_LogiiPKcS0_S0_"));
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
    note("query " + what);
    return folder.path(subfolder);
}

BootTest::BootTest() {
    for (const char* name : {"bin", "data", "temp", "fonts", "documents"}) {
        folder.folder(name);
    }
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
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    up = true;
    return vemo_root(argv.data(), static_cast<int>(texts.size()), &program);
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
    const VoJsonPtr array = ElementValue::createObject(kElementArray);
    for (const std::string& text : texts) {
        array->append(ElementValue::createObject(kElementText)->set_values(text));
    }
    return array;
}
