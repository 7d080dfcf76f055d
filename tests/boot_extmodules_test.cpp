// Extension modules: those that are loaded on request, and the list of them in the tree.
#include "boot_support.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ExtModulesTest : public BootTest {
  protected:
    static VoJsonPtr entries() { return vo_runtime_config("ExtModule"); }

    static std::vector<std::string> entryPaths() {
        std::vector<std::string> paths;
        for (int index = 0; index < entries().ArrayCount(); ++index) {
            paths.push_back(entries()(index)->getProperty("path")->strValue().str());
        }
        return paths;
    }
};

TEST_F(ExtModulesTest, LoadedOnceAndListedOnce) {
    bootBare();
    EXPECT_TRUE(entries().isNull());
    OdRxModule* const alpha = voLoad_extModule("libalpha.so", false);
    ASSERT_NE(alpha, nullptr);
    // The linker and the list hold it; the caller and the tree don't.
    EXPECT_EQ(alpha->numRefs(), 2);
    EXPECT_EQ(voLoad_extModule("alpha", true), alpha);
    EXPECT_EQ(voLoad_extModule("libalpha.so", true), alpha);
    EXPECT_EQ(alpha->numRefs(), 2);
    EXPECT_THAT(journalOf({"init"}), ElementsAre("initialize", "init libalpha.so"));
    EXPECT_THAT(entryPaths(), ElementsAre("libalpha.so"));
    EXPECT_EQ(entries()(0)->getProperty("module")->ptrValue(), alpha);
}

TEST_F(ExtModulesTest, UnloadedByStemWhateverFolderExtensionAndCase) {
    bootBare();
    voLoad_extModule("libalpha.so", false);
    voLoad_extModule("beta", false);
    journal::clear();
    voUnload_extModule("");
    voUnload_extModule("alpha");
    EXPECT_THAT(entryPaths(), ElementsAre("libalpha.so", "beta"));
    voUnload_extModule("/elsewhere/LIBAlpha.tx");
    voUnload_extModule("libalpha");
    EXPECT_THAT(journal::lines(), ElementsAre("end libalpha.so"));
    EXPECT_THAT(entryPaths(), ElementsAre("beta"));

    EXPECT_NE(voLoad_extModule("libalpha.so", false), nullptr);
    EXPECT_THAT(entryPaths(), ElementsAre("beta", "libalpha.so"));
}

TEST_F(ExtModulesTest, AtTheEndAllGoLastFirst) {
    configure({.library = R"(["alpha"])"});
    ASSERT_EQ(boot(), 0);
    for (const char* name : {"libbeta.so", "libgamma.so", "libalpha.so"}) {
        voLoad_extModule(name, false);
    }
    program.onUninitialize = [] { EXPECT_EQ(json(entries()), "[]"); };
    shutDown();
    EXPECT_THAT(journalOf({"end", "uninit"}),
                ElementsAre("end libalpha.so [quitting]", "end libgamma.so [quitting]",
                            "end libbeta.so [quitting]", "uninitialize [quitting]",
                            "end libstage.so [quitting]"));
}

TEST_F(ExtModulesTest, FailuresGiveNullAndALineWhereSomethingWasRaised) {
    bootBare();
    const std::string broken = folder.file("libbroken.so", "no shared object");
    const OdString brokenFile = OdUtf8StringToOdString(broken);
    EXPECT_EQ(voLoad_extModule("libnowhere.so", false), nullptr);
    EXPECT_EQ(voLoad_extModule("", false), nullptr);
    EXPECT_EQ(voLoad_extModule(brokenFile, true), nullptr);
    // A shared object that is no module.
    EXPECT_EQ(voLoad_extModule("libvemoutils.so", false), nullptr);
    EXPECT_THAT(libraryLog(), IsEmpty());

    EXPECT_EQ(voLoad_extModule("libraiser.so", true), nullptr);
    EXPECT_EQ(voLoad_extModule(brokenFile, false), nullptr);
    EXPECT_THAT(libraryLog(),
                ElementsAre("4 voappservice loadExModule 加载libraiser.so文件失败！",
                            "4 voappservice loadExModule 加载" + broken + "文件失败！"));
    EXPECT_TRUE(entries().isNull());
    shutDown();
    EXPECT_THAT(journalOf({"end"}), IsEmpty());
}

TEST_F(ExtModulesTest, ModuleOfAnotherPartyIsLeftAlone) {
    bootBare();
    ASSERT_FALSE(odrxDynamicLinker()->loadModule("alpha", true).isNull());
    voUnload_extModule("libalpha.so");
    EXPECT_FALSE(odrxDynamicLinker()->loadedModule("libalpha.so").isNull());
}

}  // namespace
