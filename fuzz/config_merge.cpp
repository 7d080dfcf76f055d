// The configuration: a system file and a user file, through the application service object as at
// start-up, against the version rule told once more. The input is the two texts with a NUL between
// them; without one there is no user file.
#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <utils/elementvalue.h>
#include <utils/vojson.h>

#include "core/voexports.h"
#include "core/voservicekeys.h"
#include "core/vosifindfontsvr.h"
#include "property.h"
#include "support/testfolder.h"
#include "voappservice.h"

namespace {

// ---- the rule ----

// An object's members as texts of JSON.
using Members = std::vector<std::pair<std::string, std::string>>;

bool isObject(const VoJsonPtr& node) {
    return node && (node->valueType() & kElementKindMask) == kElementObject;
}

Members membersOf(const VoJsonPtr& object) {
    Members members;
    for (int index = 0; index < object->propertyCount(); ++index) {
        OdAnsiString key;
        const VoJsonPtr value = object->propertyAt(index, key);
        members.emplace_back(key.str(), value->writeJson().str());
    }
    return members;
}

bool holds(const Members& members, const std::string& key) {
    return std::any_of(members.begin(), members.end(),
                       [&](const auto& member) { return member.first == key; });
}

void put(Members& members, const std::string& key, const std::string& value) {
    for (auto& [name, text] : members) {
        if (name == key) {
            text = value;
            return;
        }
    }
    members.emplace_back(key, value);
}

int versionOf(const VoJsonPtr& branch) {
    int version = 0;
    branch->GetDataI("version", version);
    return version;
}

std::pair<int, int> majorAndMinor(const VoJsonPtr& branch) {
    const int version = versionOf(branch);
    return version > 0 ? std::pair(version / 256, version % 256) : std::pair(1, 0);
}

// What becomes of the user's tree.
Members merged(const VoJsonPtr& system, const VoJsonPtr& user) {
    const auto [systemMajor, systemMinor] = majorAndMinor(system);
    const auto [userMajor, userMinor] = majorAndMinor(user);
    if (userMajor < systemMajor) {
        return membersOf(system);
    }
    Members result = membersOf(user);
    if (userMinor == systemMinor) {
        return result;
    }
    for (const auto& [key, value] : membersOf(system)) {
        if (!key.empty() && !holds(result, key)) {
            result.emplace_back(key, value);
        }
    }
    put(result, "version", std::to_string(versionOf(system)));
    return result;
}

// ---- the application ----

class MainProgram : public VoMainAppCallback {
  public:
    void initialize() override {}
    void uninitialize() override {}
    OdAnsiString queryAppDataPath() override { return "/data"; }
    OdAnsiString querySysFontPath() override { return "/fonts"; }
    OdAnsiString queryTempPath() override { return "/temp"; }
    OdAnsiString queryDocumentPath() override { return "/documents"; }
};

// Finds a file where its name says.
class Finder : public vosi::VosiFindFontSvr {
  public:
    OdString findFile(const OdString& name, OdDbBaseDatabase*, int) override { return name; }
    OdString findFileInDocument(const OdString& name, OdRxObject*, int) override { return name; }
    void scanFonts(int) override {}
    void scanDocumentFonts(OdRxObject*) override {}
    bool ttfFileNameByDescriptor(const OdTtfDescriptor&, OdString&) override { return false; }
};

class Application {
  public:
    Application() {
        g_appService = &service;
        odInitialize(&service);
    }
    ~Application() {
        odUninitialize();
        g_appService = nullptr;
    }
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    std::string systemFile() const { return folder.path("vemo.json"); }
    std::string userFile() const { return folder.path("user.json"); }

    void start() {
        MainProgram program;
        const std::string system = systemFile();
        const std::string user = userFile();
        const char* arguments[] = {"/opt/vemo/vemo", "-c",   system.c_str(), "-u",
                                   user.c_str(),     nullptr};
        service.parseCommandLine(arguments, 5, &program);
        vo_arbitDict_regservice(vosi::kFindFontsKey, OdRxObjectImpl<Finder>::createObject());
        requireProperty(service.loadSystemConfig() == eOk, "the system file is read");
        service.loadUserConfig();
    }

    void end() {
        service.releaseConfig();
        service.releaseArbitraryDictionary();
    }

    TestFolder folder;
    OdStaticRxObject<VoAppService> service;
};

Application& application() {
    static Application theApplication;
    return theApplication;
}

VoJsonPtr treeOf(const std::string& path) {
    VoJson tree;
    return tree.read(path, -1, nullptr) ? tree : VoJson();
}

// The two files. A new user's file says version 1 and nothing else.
struct Files {
    VoJsonPtr system;
    VoJsonPtr user;
};

Files lay(std::string_view input) {
    const std::size_t end = input.find('\0');
    const Application& app = application();
    app.folder.file("vemo.json", std::string(input.substr(0, end)));
    if (end == input.npos) {
        std::filesystem::remove(app.userFile());
        const VoJsonPtr created = ElementValue::createObject(kElementObject);
        created->SetDataI("version", 1);
        return {treeOf(app.systemFile()), created};
    }
    app.folder.file("user.json", std::string(input.substr(end + 1)));
    return {treeOf(app.systemFile()), treeOf(app.userFile())};
}

// The file that a hostile configuration names for the log is none of this target's.
bool mayBeRead(const VoJsonPtr& system) {
    return isObject(system) && !system->quickGetProperty("Core/Debug/log2file");
}

// ---- what is asked ----

std::string textOf(const VoJsonPtr& node) {
    return node ? node->writeJson().str() : "nothing";
}

void checkUserBranch(const Files& files) {
    const VoAppService& service = application().service;
    const VoJsonPtr branch = service.systemTree()->getProperty("User");
    const VoJsonPtr user = service.userTree();
    const VoJsonPtr systemBranch = files.system->getProperty("User");
    if (!isObject(files.user)) {
        requireProperty(user.isNull(), "a user file that can't be read gives no tree");
        requireProperty(textOf(branch) == textOf(systemBranch), "the system's branch stands in");
        return;
    }
    requireProperty(branch == user, "the user's tree is the tree's branch");
    const Members expected =
        isObject(systemBranch) ? merged(systemBranch, files.user) : membersOf(files.user);
    requireProperty(membersOf(user) == expected, "the version rule decides the branch");
}

void checkRest(const Files& files) {
    const VoJsonPtr tree = application().service.systemTree();
    for (const auto& [key, value] : membersOf(files.system)) {
        if (key != "User" && key != "Runtime") {
            requireProperty(textOf(tree->getProperty(key)) == value,
                            "the rest is the system file's");
        }
    }
    const VoJsonPtr runtime = tree->getProperty("Runtime");
    requireProperty(isObject(runtime) &&
                        runtime->getProperty("ExeRootPath")->strValue() == "/opt/vemo" &&
                        runtime->getProperty("DocumentPath")->strValue() == "/documents",
                    "what the process put there stays");
    const VoJsonPtr added = files.system->getProperty("Runtime");
    if (isObject(added)) {
        for (const auto& [key, value] : membersOf(added)) {
            requireProperty(runtime->hasProperty(key), "the system file adds to it");
        }
    }
}

bool isDiscarded(const Files& files) {
    const VoJsonPtr system = files.system->getProperty("User");
    const bool older = isObject(files.user) && isObject(system) &&
                       majorAndMinor(files.user).first < majorAndMinor(system).first;
    return older && files.user->propertyCount() > (files.user->hasProperty("version") ? 1 : 0);
}

// What was discarded is kept beside the file, and nothing else is.
void checkKept(const Files& files, const std::string& before) {
    std::vector<std::filesystem::path> kept;
    for (const auto& entry : std::filesystem::directory_iterator(application().folder.path())) {
        if (entry.path().filename().string().starts_with("user.v")) {
            kept.push_back(entry.path());
        }
    }
    requireProperty(kept.size() == (isDiscarded(files) ? 1 : 0), "one copy of what was discarded");
    for (const std::filesystem::path& path : kept) {
        requireProperty(contentOf(path) == before, "the copy is the file");
        std::filesystem::remove(path);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Files files = lay({reinterpret_cast<const char*>(data), size});
    if (!mayBeRead(files.system)) {
        return 0;
    }
    Application& app = application();
    const std::string before = contentOf(app.userFile());
    app.start();
    checkUserBranch(files);
    checkRest(files);
    const std::string user = textOf(app.service.userTree());
    app.end();
    checkKept(files, before);

    if (!isObject(files.user)) {
        requireProperty(contentOf(app.userFile()) == before, "what can't be read isn't replaced");
        return 0;
    }
    requireProperty(textOf(treeOf(app.userFile())) == user, "the user's tree is saved");
    app.start();
    requireProperty(textOf(app.service.userTree()) == user, "a second start changes nothing");
    app.end();
    return 0;
}
