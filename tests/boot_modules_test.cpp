// The first wave of modules, which the configuration names, and the record of it.
#include "boot_support.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ModulesTest : public BootTest {
  protected:
    static std::string record() { return json(vo_runtime_config("loadedModules")); }
};

TEST_F(ModulesTest, ListsInTheirOrderWithWhatFailedPassedOver) {
    configure({.odaLibrary = R"(["runtime.tx", "missing.tx", "", 7, {"no": "text"}])",
               .coreLibrary = R"(["stage", "ghost %n 100%% %s", "", "runtime.tx"])",
               .library = R"(["alpha", "nowhere", null, "beta"])",
               .further = R"(, "silent": true)"});
    ASSERT_EQ(boot(), 0);
    EXPECT_THAT(journalOf({"init "}), ElementsAre("init runtime.tx", "init libstage.so",
                                                  "init libalpha.so", "init libbeta.so"));
    EXPECT_EQ(record(), R"({"core":["libstage.so"],"fixExtLibray":["libalpha.so","libbeta.so"],)"
                        R"("odaExt":["runtime.tx"]})");
    EXPECT_THAT(libraryLog(), ElementsAre("4 vemo_root operator() missing.tx加载失败!",
                                          "4 vemo_root operator() ghost %n 100% %s加载失败!",
                                          "4 vemo_root operator() runtime.tx加载失败!",
                                          "4 vemo_root operator() nowhere加载失败!"));
}

TEST_F(ModulesTest, ListsThatAreNoneCountAsEmpty) {
    configure({.odaLibrary = R"("runtime.tx")",
               .coreLibrary = R"({"Alias": "x.pgp", "0": "stage"})",
               .library = "null"});
    EXPECT_EQ(boot(), kVemoNoMainWindow);
    EXPECT_EQ(record(), R"({"core":[],"fixExtLibray":[],"odaExt":[]})");
    EXPECT_THAT(journalOf({"init "}), IsEmpty());
    EXPECT_THAT(libraryLog(), IsEmpty());
}

TEST_F(ModulesTest, FixedModulesGoLastFirstAndOthersWithTheRuntime) {
    configure(
        {.odaLibrary = R"(["runtime.tx"])", .library = R"(["alpha", "nowhere", "beta", "gamma"])"});
    ASSERT_EQ(boot(), 0);
    const auto reactor = JournalReactor::create("reactor");
    reactor->then = [] { odrxDynamicLinker()->unloadModule("libbeta.so"); };
    dispatcher()->addReactor(reactor.get());
    EXPECT_EQ(shutDown(), 0);
    EXPECT_THAT(journalOf({"reactor", "end", "uninit"}),
                ElementsAre("reactor hears appExiting [quitting]", "end libbeta.so [quitting]",
                            "end libgamma.so [quitting]", "end libalpha.so [quitting]",
                            "uninitialize [quitting]", "end libstage.so [quitting]",
                            "end runtime.tx [quitting]"));
}

TEST_F(ModulesTest, SecondWaveTakesTheUsersListAndTheCommandLines) {
    configure({.user = R"({"version": 256, "Library": ["libbeta.so", "", "libnowhere.so", 5,
                           "alpha"]})",
               // A list for the command line can only come from here.
               .further = R"(, "Runtime": {"ExeOption": {"Load": ["libgamma.so"]}})"});
    ASSERT_EQ(boot(), 0);
    EXPECT_THAT(journalOf({"init ", "show"}),
                ElementsAre("init libstage.so", "showMainWindow", "init libbeta.so",
                            "init libalpha.so", "init libgamma.so"));
    EXPECT_EQ(record(), R"({"core":["libstage.so"],"fixExtLibray":[],"odaExt":[]})");
    EXPECT_THAT(libraryLog(), IsEmpty());
}

}  // namespace
