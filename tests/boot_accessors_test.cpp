// The exported accessors and the service dictionary: their answers with the application and
// without.
#include <ctime>

#include "boot_support.h"

using testing::IsEmpty;

namespace {

using AccessorsTest = BootTest;

void expectAnswersWithoutApplication() {
    EXPECT_TRUE(vo_sys_config("").isNull());
    EXPECT_TRUE(vo_sys_config("Core").isNull());
    EXPECT_TRUE(vo_runtime_config("").isNull());
    EXPECT_TRUE(vo_user_config("", kElementObject).isNull());
    EXPECT_TRUE(vo_user_config("a/b", kElementObject).isNull());
    EXPECT_TRUE(vo_is_appQuiting());
    EXPECT_EQ(vodbSystemServices(), nullptr);
    vo_save_user_config("");
    vo_save_user_config("/nowhere/file.json");
    vo_notify_user_config_changed(VoJsonPtr());
    voUnload_extModule("libalpha.so");
    vo_arbitDict_regservice(L"Test/Key", JournalReactor::create("service"));
    vo_arbitDict_clearservice(L"Test/Key");
    EXPECT_THROW(vo_arbitDict_getservice(L"Test/Key"), OdError);
    EXPECT_THROW(voLoad_extModule("libalpha.so", true), OdError);
}

TEST_F(AccessorsTest, WithoutTheApplication) {
    expectAnswersWithoutApplication();
    bootBare();
    EXPECT_FALSE(vo_is_appQuiting());
    shutDown();
    expectAnswersWithoutApplication();
    EXPECT_THAT(libraryLog(), IsEmpty());
}

TEST_F(AccessorsTest, BranchesOfTheTree) {
    folder.file("data/user.json", R"({"version": 256, "own": {"a": 1}})");
    bootBare();
    EXPECT_EQ(vo_sys_config("Runtime"), vo_runtime_config(""));
    EXPECT_EQ(vo_sys_config("")->getProperty("Runtime"), vo_runtime_config(""));
    EXPECT_EQ(vo_runtime_config("ExeOption"), vo_sys_config("Runtime/ExeOption"));
    EXPECT_EQ(vo_user_config("", kElementObject), vo_sys_config("User"));
    EXPECT_EQ(json(vo_sys_config("User/own/a")), "1");
    EXPECT_TRUE(vo_sys_config("Core/none/deeper").isNull());
    EXPECT_TRUE(vo_runtime_config("none").isNull());
    // Neither a look-up nor the inert notice changes a thing.
    EXPECT_TRUE(vo_user_config("own/b/c", 0).isNull());
    vo_notify_user_config_changed(vo_user_config("own", 0));
    vo_notify_user_config_changed(VoJsonPtr());
    EXPECT_EQ(json(vo_sys_config("User")), R"({"version":256,"own":{"a":1}})");
    EXPECT_EQ(contentOf(userFile()), R"({"version": 256, "own": {"a": 1}})");
}

TEST_F(AccessorsTest, UserNodesAreMadeOnRequest) {
    bootBare();
    const VoJsonPtr leaf = vo_user_config("a/b//", kElementObject);
    ASSERT_TRUE(leaf);
    leaf->set_propertyI("n", 1, false);
    const VoJsonPtr list = vo_user_config("list", kElementArray);
    EXPECT_EQ(vo_user_config("list", kElementArray), list);
    EXPECT_EQ(vo_user_config("a/b/", kElementArray), leaf);
    vo_user_config("a/c\\", kElementArray);
    vo_user_config("x/y/z", kElementArray);
    // What is no object can have no child, and is not replaced for one.
    EXPECT_TRUE(vo_user_config("list/entry", kElementObject).isNull());
    EXPECT_TRUE(vo_user_config("a/b/n/deeper", kElementObject).isNull());
    EXPECT_EQ(json(vo_user_config("", 0)),
              R"({"version":256,"a":{"b":{"n":1},"c":[]},"list":[],"x":{"y":{"z":[]}}})");
}

TEST_F(AccessorsTest, BuildTimestampIsThere) {
    EXPECT_GT(vo_build_timestamp(), 1'600'000'000);
    EXPECT_LT(vo_build_timestamp(), std::time(nullptr) + 86'400);
}

TEST_F(AccessorsTest, ServiceDictionaryHoldsOneReferenceEach) {
    bootBare();
    auto first = JournalReactor::create("first");
    const auto second = JournalReactor::create("second");
    vo_arbitDict_regservice(L"Test/Key", first);
    vo_arbitDict_regservice(L"test/key", second);  // another key
    EXPECT_EQ(first->numRefs(), 2);
    EXPECT_EQ(vo_arbitDict_getservice(L"Test/Key").get(), first.get());
    EXPECT_EQ(first->numRefs(), 2);

    vo_arbitDict_regservice(L"Test/Key", second);
    EXPECT_EQ(first->numRefs(), 1);
    EXPECT_EQ(second->numRefs(), 3);
    vo_arbitDict_clearservice(L"Test/Key");
    vo_arbitDict_clearservice(L"Test/Key");
    EXPECT_EQ(second->numRefs(), 2);
    EXPECT_TRUE(vo_arbitDict_getservice(L"Test/Key").isNull());
    EXPECT_TRUE(vo_arbitDict_getservice(L"Core/DocMgr").isNull());
    shutDown();
    EXPECT_EQ(second->numRefs(), 1);
}

TEST_F(AccessorsTest, HostServicesOutliveAnyCountAndKeepQuiet) {
    bootBare();
    ExHostAppServices* host = vodbSystemServices();
    ASSERT_NE(host, nullptr);
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    for (int count = 0; count < 3; ++count) {
        host->OdDbBaseHostAppServices::release();
        odrxSystemServices()->release();
    }
    host->warning("group", OdString(L"text"));
    host->warning(L"text");
    host->warning(eFileNotFound, OdDbObjectId());
    host->warning(OdError(L"text"));
    EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(host->createDatabase(true, 0).isNull());
    EXPECT_FALSE(host->newUndoController().isNull());
}

}  // namespace
