// A program that carries the library's objects itself: modules bind to it, though they name the
// shared library as the one they need.
#include "boot_support.h"
#include "voappservice.h"

using testing::ElementsAre;

namespace {

using CarriedTest = BootTest;

TEST_F(CarriedTest, ThereIsOneApplicationInTheProcess) {
    // Were there two, the modules' services would be registered with nobody: 401.
    ASSERT_EQ(boot(), 0);
    EXPECT_THAT(journalOf({"showMainWindow", "newDocument"}),
                ElementsAre("showMainWindow", "newDocument \"\" 1"));
    EXPECT_EQ(vodbSystemServices(), g_appService);
    EXPECT_FALSE(g_appService->arbitraryDictionary()->getAt(vosi::kMainUIKey).isNull());
    shutDown();
    EXPECT_EQ(g_appService, nullptr);
    EXPECT_EQ(journal::lines().back(), "end libstage.so [quitting]");
}

// Modules reach only what their names find in the list; the operation itself takes any module.
TEST_F(CarriedTest, ModuleThatIsNotInTheListIsNotUnloaded) {
    bootBare();
    const OdRxModulePtr alpha = odrxDynamicLinker()->loadModule("alpha", true);
    ASSERT_FALSE(alpha.isNull());
    g_appService->unloadExModule(alpha.get());
    g_appService->unloadExModule(nullptr);
    EXPECT_FALSE(odrxDynamicLinker()->loadedModule("alpha").isNull());
}

}  // namespace
