// A life of the application in which one call fails, each in turn. Before vemo_exit the main
// program hears of it, the log does or nobody, as it should be, and vemo_exit takes down what was
// built; inside vemo_exit the life ends there. The user's file is whole at every moment.
#include <dlfcn.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string_view>
#include <utility>

#include "boot_support.h"
#include "child.h"
#include "core/vofibersvr.h"
#include "faults.h"
#include "support/sfntbuilder.h"

using faults::Call;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

constexpr const char* kUsersText = "{ \"version\": 256, \"mine\": \"work of years\" }\n";
// What a save makes of it begins so; start-up adds to the tree.
constexpr const char* kUsersTree = R"({"version":256,"mine":"work of years")";

// The moment at which the drawing runtime starts: the application service has been set just before.
std::function<void()> atRuntimeStart = [] {};

enum class User { kKnown, kNew };

// Hears every event. Needs no memory, since it also ends while there may be none.
class Listener : public vosi::VosiApRxEventReactor {
  public:
    ~Listener() override { --living; }

    void onMainWindowReady() override { heard("mainWindowReady"); }
    void onAppStarted() override { heard("appStarted"); }
    void onAppExiting() override { heard("appExiting"); }
    void onSysConfigLoaded() override { heard("sysConfigLoaded"); }
    void onUserConfigLoaded() override { heard("userConfigLoaded"); }

    static inline int living = 0;

    std::function<void(std::string_view event)> heard;
};

// One life with all that the root does in it.
class Life : public BootTest {
  public:
    explicit Life(User kind = User::kKnown) : user(kind) {
        configure({.odaLibrary = R"(["runtime.tx"])",
                   .coreLibrary = R"(["stage", "aliases", "autotest"])",
                   .library = R"(["alpha"])",
                   .user = R"({"version": 256, "Library": ["libbeta.so"]})",
                   .furtherCore = R"(, "paths": {"fontPaths": ["%EXEPATH%/fonts"]})"});
        folder.file("bin/fonts/arrow.ttf", fontfile::sfnt({{fontfile::family("Arrow")}}));
        folder.file("share/fonts/bow.ttf", fontfile::sfnt({{fontfile::family("Bow")}}));
        folder.file("bin/adinit.dat", "# pages\n4711 30\n");
        if (user == User::kKnown) {
            folder.file("data/user.json", kUsersText);
        }
        checkFile = folder.path("check");
        faults::redirect("/var/tmp/vemo.check", checkFile.c_str());
        program.onInitialize = [this] { listen(); };
        journal::set("records", "1");
    }
    void TestBody() override {}

    /// What the call gave, and in words what it raised.
    struct Outcome {
        int result = -1;
        std::string raised = {};
    };
    Outcome start() {
        return outcomeOf([this] { return boot({"plan.dwg", "-s", "walk.ast"}); });
    }
    Outcome end() {
        return outcomeOf([this] { return shutDown(); });
    }

    void expectTakenDown(const std::vector<std::string>& modules) const {
        EXPECT_TRUE(vo_is_appQuiting());
        EXPECT_TRUE(odrxSysRegistry().isNull());
        for (const std::string& module : modules) {
            EXPECT_THAT(journalOf({"end "}), Contains("end " + module + " [quitting]"));
        }
        EXPECT_EQ(Listener::living, 0);
    }

    static std::vector<std::string> modulesUp() {
        std::vector<std::string> names;
        if (odrxSystemServices()) {
            for (const OdRxModulePtr& module : odrxDynamicLinker()->loadedModules()) {
                names.push_back(utf8(module->moduleName()));
            }
        }
        return names;
    }

    /// To the byte what it was, or what a save makes of it.
    void expectUserFileWhole() const {
        const std::string text = contentOf(userFile());
        if (user == User::kKnown) {
            EXPECT_TRUE(text == kUsersText || jsonOfFile(userFile()).starts_with(kUsersTree))
                << text;
        } else if (std::filesystem::exists(userFile())) {
            EXPECT_TRUE(jsonOfFile(userFile()).starts_with(R"({"version":)")) << text;
        }
        for (const auto& entry : std::filesystem::directory_iterator(folder.path("data"))) {
            EXPECT_NE(entry.path().filename().string().front(), '.') << entry.path();
        }
    }

    using BootTest::configure;
    using BootTest::userFile;

    bool usedFiber = false;
    std::string checkFile;
    std::function<void(std::string_view)> onEvent = [](std::string_view) {};

  private:
    template <class Code>
    static Outcome outcomeOf(Code&& code) {
        try {
            return {code()};
        } catch (const std::bad_alloc&) {
            return {-1, "out of memory"};
        } catch (const OdError& error) {
            return {-1, error.code() == eOutOfMemory ? "out of memory" : utf8(error.description())};
        } catch (const std::exception& error) {
            return {-1, error.what()};
        }
    }

    void listen() {
        const auto listener = OdRxObjectImpl<Listener>::createObject();
        ++Listener::living;
        listener->heard = [this](std::string_view event) {
            useFiber();
            onEvent(event);
        };
        dispatcher()->addReactor(listener.get());
    }

    // At the first event that the main thread hears as a fiber.
    void useFiber() {
        const VoFiberSvrPtr fibers(vo_arbitDict_getservice(vosi::kFiberKey));
        if (fibers.isNull() || !fibers->currentFiber() || std::exchange(askedForFiber, true)) {
            return;
        }
        const auto switchBack = [](void* data) {
            auto* service = static_cast<VoFiberSvr*>(data);
            service->switchToFiber(service->findFiberByData(nullptr));
        };
        if (const VoFiberHandle fiber = fibers->createFiber(0, switchBack, fibers.get())) {
            fibers->switchToFiber(fiber);
            fibers->deleteFiber(fiber);
            usedFiber = true;
        }
    }

    User user;
    bool askedForFiber = false;
};

enum class Stretch { kStart, kExit };

// How many such calls a life has there that fails nowhere.
long callsIn(Call call, Stretch stretch, User user) {
    const SharedValue<long> count;
    inChild("the life without faults", [&] {
        Life life(user);
        atRuntimeStart = [&] { faults::arm(call, 0); };
        EXPECT_EQ(life.start().result, 0);
        EXPECT_TRUE(life.usedFiber);
        const long inStart = faults::disarm();
        faults::arm(call, 0);
        EXPECT_EQ(life.end().result, 0);
        const long inExit = faults::disarm();
        *count = stretch == Stretch::kStart ? inStart : inExit;
    });
    return *count;
}

bool isAbout(const std::string& name) {
    return faults::victim().find(name) != std::string::npos;
}

// A file that isn't there for its reader: the configuration's loaders alone say so.
void expectFileMissed(Call call, const Life::Outcome& outcome) {
    const bool isUserFileMade = isAbout("/.user.json.") || call == Call::kRename;
    if (isAbout("/vemo.json")) {
        EXPECT_EQ(outcome.result, kVemoNoMainWindow);
        EXPECT_THAT(libraryLog(), ElementsAre("5 voappservice loadSystemConfig 读取配置文件失败"));
        return;
    }
    EXPECT_EQ(outcome.result, 0);
    // One line for each of the two attempts, on a disk that stays full.
    const bool fullDisk = call == Call::kDiskFull;
    EXPECT_EQ(libraryLog().size(), isUserFileMade ? fullDisk ? 2U : 1U : 0U);
    for (const std::string& line : libraryLog()) {
        EXPECT_THAT(line, AllOf(StartsWith("4 voappservice loadUserConfig 创建"),
                                EndsWith("user.json文件失败！")));
    }
}

void expectModuleMissed(const Life::Outcome& outcome) {
    const auto missed = [](const std::string& name) {
        return "4 vemo_root operator() " + name + "加载失败!";
    };
    EXPECT_EQ(outcome.result, isAbout("libstage.so") ? kVemoNoMainWindow : 0);
    for (const std::string name : {"stage", "aliases", "autotest", "alpha"}) {
        if (isAbout("lib" + name + ".so")) {
            EXPECT_THAT(libraryLog(), Contains(missed(name)));
        }
    }
    if (isAbout("runtime.tx")) {
        EXPECT_THAT(libraryLog(), ElementsAre(missed("runtime.tx")));
    } else if (isAbout("libbeta.so")) {
        EXPECT_THAT(libraryLog(),
                    ElementsAre("4 voappservice loadExModule 加载libbeta.so文件失败！"));
    }
}

void expectOutcome(Call call, const Life& life, const Life::Outcome& outcome) {
    if (call == Call::kAllocation) {
        // Swallowed where a module of the user's is loaded, and where a name is only a convenience.
        EXPECT_TRUE(outcome.raised == "out of memory" || outcome.result == 0)
            << outcome.result << ' ' << outcome.raised;
        return;
    }
    EXPECT_EQ(outcome.raised, "");
    EXPECT_EQ(life.usedFiber, call != Call::kThread && outcome.result == 0);
    switch (call) {
        case Call::kShortRead:
        case Call::kShortWrite:
        case Call::kThread:
            EXPECT_EQ(outcome.result, 0);
            EXPECT_THAT(libraryLog(), IsEmpty());
            break;
        case Call::kModuleLoad:
            expectModuleMissed(outcome);
            break;
        default:
            expectFileMissed(call, outcome);
    }
}

struct Row {
    Call call;
    User user;
};

std::string nameOf(const testing::TestParamInfo<Row>& row) {
    return std::string(faults::nameOf(row.param.call)) +
           (row.param.user == User::kNew ? "OfANewUser" : "");
}

// Every call in its turn; of the thousands of allocations every so-manieth, unless all are asked
// for.
long strideOf(Call call, long calls) {
    constexpr long kMostLives = 120;
    const bool all = std::getenv("VEMO_EVERY_FAULT") != nullptr;
    return call == Call::kAllocation && !all ? std::max(1L, calls / kMostLives) : 1;
}

class FailedCall : public testing::TestWithParam<Row> {
  protected:
    template <class Code>
    void eachInTurn(Stretch stretch, Code&& code) {
        const auto [call, user] = GetParam();
        const long calls = callsIn(call, stretch, user);
        EXPECT_GT(calls, 0);
        long lives = 0;
        for (long number = 1; number <= calls && !HasFailure(); number += strideOf(call, calls)) {
            ++lives;
            inChild("the life whose call " + std::to_string(number) + " of " +
                        std::to_string(calls) + " fails",
                    [&] { code(number); });
        }
        std::printf("%ld lives, one for each of %ld calls or for as many of them\n", lives, calls);
    }
};

class FailedCallAtStart : public FailedCall {};
class FailedCallAtExit : public FailedCall {};

TEST_P(FailedCallAtStart, IsRaisedOrSurvivedAndAllIsTakenDown) {
    eachInTurn(Stretch::kStart, [this](long number) {
        const auto [call, user] = GetParam();
        Life life(user);
        atRuntimeStart = [number, armed = call] { faults::arm(armed, number); };
        const Life::Outcome outcome = life.start();
        faults::disarm();
        atRuntimeStart = [] {};
        SCOPED_TRACE("file: " + faults::victim());
        EXPECT_TRUE(faults::struck());
        expectOutcome(call, life, outcome);
        life.expectUserFileWhole();

        const std::vector<std::string> modules = Life::modulesUp();
        const Life::Outcome end = life.end();
        EXPECT_EQ(end.raised, "");
        EXPECT_EQ(end.result, 0);
        life.expectTakenDown(modules);
        life.expectUserFileWhole();

        // Nothing stands in the way of a second life.
        EXPECT_EQ(life.start().result, 0);
        EXPECT_EQ(life.end().result, 0);
        life.expectUserFileWhole();
    });
}

TEST_P(FailedCallAtExit, EndsItThereOrIsLogged) {
    eachInTurn(Stretch::kExit, [this](long number) {
        const auto [call, user] = GetParam();
        Life life(user);
        EXPECT_EQ(life.start().result, 0);
        const std::string before = contentOf(life.userFile());
        clearLibraryLog();
        faults::arm(call, number);
        const Life::Outcome end = life.end();
        faults::disarm();
        SCOPED_TRACE("file: " + faults::victim());
        EXPECT_TRUE(faults::struck());
        life.expectUserFileWhole();
        if (!end.raised.empty()) {
            EXPECT_EQ(call, Call::kAllocation);
            EXPECT_EQ(end.raised, "out of memory");
            return;
        }
        EXPECT_EQ(end.result, 0);
        // A folder that can't be flushed has its new file all the same, and one byte at a time is
        // as good as all of them.
        const bool saved = call == Call::kShortWrite || faults::victim().ends_with("/data");
        if (call != Call::kAllocation) {
            EXPECT_EQ(contentOf(life.userFile()) != before, saved);
            EXPECT_EQ(libraryLog().empty(), saved);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(
    Each, FailedCallAtStart,
    testing::Values(Row{Call::kAllocation, User::kKnown}, Row{Call::kAllocation, User::kNew},
                    Row{Call::kOpen, User::kKnown}, Row{Call::kOpen, User::kNew},
                    Row{Call::kRead, User::kKnown}, Row{Call::kShortRead, User::kKnown},
                    Row{Call::kWrite, User::kNew}, Row{Call::kShortWrite, User::kNew},
                    Row{Call::kDiskFull, User::kNew}, Row{Call::kFlush, User::kNew},
                    Row{Call::kRename, User::kNew}, Row{Call::kThread, User::kKnown},
                    Row{Call::kModuleLoad, User::kKnown}),
    nameOf);
INSTANTIATE_TEST_SUITE_P(
    Each, FailedCallAtExit,
    testing::Values(Row{Call::kAllocation, User::kKnown}, Row{Call::kOpen, User::kKnown},
                    Row{Call::kWrite, User::kKnown}, Row{Call::kShortWrite, User::kKnown},
                    Row{Call::kDiskFull, User::kKnown}, Row{Call::kFlush, User::kKnown},
                    Row{Call::kRename, User::kKnown}),
    nameOf);

// ---- faults that modules and reactors raise ----

struct Raiser {
    const char* name;
    const char* odaLibrary;
    const char* coreLibrary;
    const char* library;
};

TEST(RaisingModule, OfTheFirstWaveEndsTheStartAndTheRestIsTakenDown) {
    const Raiser raisers[] = {{"odaLibrary", R"(["libraiser.so"])", R"(["stage"])", R"(["alpha"])"},
                              {"coreLibrary", "[]", R"(["stage", "raiser"])", R"(["alpha"])"},
                              {"library", "[]", R"(["stage"])", R"(["alpha", "raiser"])"}};
    for (const Raiser& raiser : raisers) {
        inChild(raiser.name, [&] {
            Life life;
            life.configure({.odaLibrary = raiser.odaLibrary,
                            .coreLibrary = raiser.coreLibrary,
                            .library = raiser.library});
            EXPECT_EQ(life.start().raised, "no licence for this module");
            const auto modules = Life::modulesUp();
            EXPECT_THAT(modules, testing::Not(Contains("libraiser.so")));
            EXPECT_EQ(life.end().result, 0);
            life.expectTakenDown(modules);
            life.expectUserFileWhole();
        });
    }
}

TEST(RaisingModule, OfTheSecondWaveIsLogged) {
    inChild("user's module", [] {
        Life life;
        life.configure({.user = R"({"version": 256, "Library": ["libraiser.so"]})"});
        std::filesystem::remove(life.userFile());
        EXPECT_EQ(life.start().result, 0);
        EXPECT_EQ(life.end().result, 0);
        EXPECT_THAT(libraryLog(),
                    Contains("4 voappservice loadExModule 加载libraiser.so文件失败！"));
    });
}

TEST(RaisingReactor, EndsTheStartOrTheExitAtItsEvent) {
    for (const char* const event :
         {"sysConfigLoaded", "userConfigLoaded", "mainWindowReady", "appStarted", "appExiting"}) {
        inChild(event, [&] {
            Life life;
            life.onEvent = [&](std::string_view heard) {
                if (heard == event) {
                    throw OdError(OdString(L"raised by a reactor"));
                }
            };
            const bool atExit = event == std::string_view("appExiting");
            const Life::Outcome start = life.start();
            EXPECT_EQ(start.raised, atExit ? "" : "raised by a reactor");
            const auto modules = Life::modulesUp();
            const Life::Outcome end = life.end();
            EXPECT_EQ(end.raised, atExit ? "raised by a reactor" : "");
            life.expectUserFileWhole();
            if (atExit) {
                EXPECT_EQ(contentOf(life.userFile()), kUsersText);
                EXPECT_THAT(journalOf({"end ", "shutDown", "uninitialize"}), IsEmpty());
            } else {
                life.expectTakenDown(modules);
            }
        });
    }
}

// ---- the check file, in a folder that is everyone's ----

TEST(CheckFile, IsWrittenToAPlainFileOfOneNameAlone) {
    inChild("check file", [] {
        Life life;
        const std::filesystem::path check = life.checkFile;
        const std::filesystem::path other = check.string() + ".other";
        const auto contentAfterStart = [&] {
            EXPECT_EQ(life.start().result, 0);
            EXPECT_EQ(life.end().result, 0);
            return contentOf(other);
        };
        EXPECT_EQ(contentAfterStart(), "");
        EXPECT_EQ(contentOf(check), "init done!");
        std::ofstream(check) << "something longer than that";
        contentAfterStart();
        EXPECT_EQ(contentOf(check), "init done!");

        std::filesystem::remove(check);
        std::ofstream(other) << "a victim's";
        std::filesystem::create_symlink(other, check);
        EXPECT_EQ(contentAfterStart(), "a victim's");
        std::filesystem::remove(check);
        std::filesystem::create_hard_link(other, check);
        EXPECT_EQ(contentAfterStart(), "a victim's");
        std::filesystem::remove(check);
        ASSERT_EQ(::mkfifo(check.c_str(), 0600), 0);
        contentAfterStart();
        EXPECT_THAT(libraryLog(), IsEmpty());
    });
}

}  // namespace

// In front of the runtime's own function, as the functions in faults.cpp are.
void odInitialize(OdRxSystemServices* services) {
    atRuntimeStart();
    using Initialize = void (*)(OdRxSystemServices*);
    static const auto real =
        reinterpret_cast<Initialize>(dlsym(RTLD_NEXT, "_Z12odInitializeP18OdRxSystemServices"));
    real(services);
}
