#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <vector>

#include "testsupport.h"

namespace {

const OdString moduleFolder = OdUtf8StringToOdString(DRAWING_TEST_MODULES);

std::vector<OdString> traced;

void keepTrace(const wchar_t* message) {
    traced.emplace_back(message);
}

class Linker : public RuntimeTest {
  protected:
    void SetUp() override {
        RuntimeTest::SetUp();
        odSetTraceFunc(keepTrace);
        traced.clear();
    }
    void TearDown() override {
        if (odrxSystemServices()) {
            RuntimeTest::TearDown();
        }
        odSetTraceFunc(nullptr);
    }

    static OdRxDynamicLinker& linker() { return *odrxDynamicLinker(); }
    static OdString pathOf(const OdString& file) { return moduleFolder + L"/" + file; }
    OdRxModulePtr loadByHandle(const OdString& name) {
        OdRxModuleLibrary* library = services.loadModuleLib(name, true);
        return OdRxModulePtr(linker().moduleOfLibrary(library, true), kOdRxObjAttach);
    }
    static OdRxModuleFailure lastFailure() {
        const auto failures = linker().failures();
        return failures.isEmpty() ? OdRxModuleFailure() : failures.last();
    }
    static bool lastReasonHas(const OdString& words) {
        return lastFailure().reason.find(words.view()) >= 0;
    }
};

using Traces = std::vector<OdString>;

}  // namespace

TEST_F(Linker, LoadsByHandleOnce) {
    const OdRxModulePtr module = loadByHandle(pathOf(L"libdrawing_good.so"));
    ASSERT_FALSE(module.isNull());
    EXPECT_EQ(module->moduleName(), L"libdrawing_good.so");
    EXPECT_EQ(module->numRefs(), 2);
    EXPECT_EQ(loadByHandle(pathOf(L"libdrawing_good.so")), module);
    OdRxModuleLibrary* library = services.loadModuleLib(pathOf(L"libdrawing_good.so"), true);
    EXPECT_EQ(linker().moduleOfLibrary(library, false), module.get());
    EXPECT_EQ(module->numRefs(), 2) << "a result without a reference carried one";
    EXPECT_EQ(traced, Traces{L"good init"});
    EXPECT_TRUE(linker().failures().isEmpty());
}

TEST_F(Linker, LoadsByNameFromItsFoldersInTheirOrder) {
    EXPECT_TRUE(linker().loadModule(L"drawing_good", true).isNull());
    const TempFolder folder;
    folder.write("libdrawing_good.so", "no library");
    linker().addModuleFolder(L"");
    linker().addModuleFolder(L"/nowhere");
    linker().addModuleFolder(moduleFolder);
    linker().addModuleFolder(folder.path("").left(folder.path("").getLength() - 1));
    const OdRxModulePtr module = linker().loadModule(L"drawing_good", false);
    EXPECT_EQ(module->moduleName(), L"libdrawing_good.so");
    EXPECT_EQ(linker().loadModule(L"libdrawing_good.so", false), module);
    EXPECT_EQ(linker().loadedModule(L"drawing_good"), module);
    EXPECT_TRUE(linker().loadedModule(L"drawing").isNull());
    EXPECT_EQ(traced, Traces{L"good init"});
}

TEST_F(Linker, DoesNotLookIntoTheWorkingFolder) {
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(DRAWING_TEST_MODULES);
    const OdRxModulePtr bare = linker().loadModule(L"libdrawing_good.so", true);
    // Once more where the loader's own list has it (LD_LIBRARY_PATH with an empty entry).
    const char* const searched = std::getenv("LD_LIBRARY_PATH");
    const bool hasEmptyEntry = searched && std::string_view(searched) == ":";
    const bool saysWhy = lastReasonHas(L"not taken from the working folder");
    const OdRxModulePtr relative = linker().loadModule(L"./libdrawing_good.so", true);
    linker().addModuleFolder(L".");
    const OdRxModulePtr inRelativeFolder = linker().loadModule(L"libdrawing_good.so", true);
    std::filesystem::current_path(former);
    EXPECT_TRUE(bare.isNull());
    EXPECT_EQ(saysWhy, hasEmptyEntry);
    EXPECT_TRUE(relative.isNull());
    EXPECT_TRUE(inRelativeFolder.isNull());
    EXPECT_TRUE(traced.empty());
}

TEST_F(Linker, TakesNothingThatEveryoneMayWrite) {
    namespace fs = std::filesystem;
    const fs::path original = fs::path(DRAWING_TEST_MODULES) / "libdrawing_good.so";
    const TempFolder open;
    const TempFolder own;
    fs::copy_file(original, open.path() / "libdrawing_good.so");
    fs::permissions(open.path(), fs::perms::all | fs::perms::sticky_bit);
    fs::create_symlink(open.path() / "libdrawing_good.so", own.path() / "liblinked.so");
    fs::copy_file(original, own.path() / "libwritable.so");
    fs::permissions(own.path() / "libwritable.so", fs::perms::others_write, fs::perm_options::add);
    for (const OdString& path :
         {open.path("libdrawing_good.so"), own.path("liblinked.so"), own.path("libwritable.so")}) {
        EXPECT_TRUE(loadByHandle(path).isNull()) << OdStringToUtf8String(path).c_str();
        EXPECT_TRUE(lastReasonHas(L"everyone may write"));
    }
    EXPECT_TRUE(traced.empty());
    fs::permissions(open.path(), fs::perms::others_write, fs::perm_options::remove);
    EXPECT_FALSE(loadByHandle(own.path("liblinked.so")).isNull());
}

TEST_F(Linker, EndsAModuleAndLoadsItAfresh) {
    OdRxModulePtr module = loadByHandle(pathOf(L"libdrawing_good.so"));
    EXPECT_TRUE(linker().unloadModule(module->moduleName()));
    EXPECT_FALSE(linker().unloadModule(L"libdrawing_good.so"));
    EXPECT_TRUE(linker().loadedModules().isEmpty());
    EXPECT_EQ(module->numRefs(), 1);
    const OdRxModulePtr again = loadByHandle(pathOf(L"libdrawing_good.so"));
    EXPECT_FALSE(again == module);
    EXPECT_EQ(traced, (Traces{L"good init", L"good end", L"good init"}));
    module.release();
}

TEST_F(Linker, KeepsNoModuleWhoseInitFailed) {
    const OdString name = pathOf(L"libdrawing_failing_init.so");
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(raisedBy([&] { loadByHandle(name); }), eNoInterface);
        EXPECT_TRUE(linker().loadedModules().isEmpty());
    }
    EXPECT_EQ(lastFailure().moduleName, L"libdrawing_failing_init.so");
    EXPECT_EQ(lastFailure().reason, L"No interface: on purpose");
    EXPECT_TRUE(traced.empty());
}

TEST_F(Linker, KeepsTheLoadersWords) {
    EXPECT_EQ(services.loadModuleLib(L"libdrawing_nowhere.so", false), nullptr);
    EXPECT_EQ(lastFailure().moduleName, L"libdrawing_nowhere.so");
    EXPECT_TRUE(lastReasonHas(L"cannot open shared object file"));
    EXPECT_TRUE(linker().loadModule(L"libdrawing_nowhere.so", true).isNull());
    EXPECT_EQ(linker().failures().size(), 1u) << "the same reason twice in a row";

    linker().addModuleFolder(moduleFolder);
    EXPECT_EQ(services.loadModuleLib(L"libdrawing_undefined.so", true), nullptr);
    EXPECT_TRUE(lastReasonHas(L"undefined symbol: drawingNowhereDefined"));
    try {
        services.loadModuleLib(L"libdrawing_undefined.so", false);
        FAIL() << "a library that can't be loaded was loaded";
    } catch (const OdError_FileException& error) {
        EXPECT_EQ(error.code(), eCantOpenFile);
        EXPECT_GE(error.description().find(L"drawingNowhereDefined"), 0);
    }
    EXPECT_EQ(raisedBy([] { linker().loadModule(L"drawing_undefined", false); }), eCantOpenFile);
    EXPECT_EQ(raisedBy([] { linker().loadModule(L"drawing_nowhere", false); }), eCantOpenFile);
}

TEST_F(Linker, RefusesWhatIsNoModule) {
    const TempFolder folder;
    EXPECT_TRUE(loadByHandle(folder.write("libtext.so", "no library")).isNull());
    EXPECT_TRUE(lastReasonHas(L"file too short"));
    EXPECT_TRUE(loadByHandle(L"").isNull());
    EXPECT_TRUE(linker().loadModule(L"", true).isNull());
    EXPECT_TRUE(lastReasonHas(L"no file name"));
    EXPECT_TRUE(loadByHandle(L"libc.so.6").isNull());
    EXPECT_TRUE(lastReasonHas(L"undefined symbol: odrxCreateModuleObject"));
    EXPECT_TRUE(loadByHandle(pathOf(L"libdrawing_no_entry.so")).isNull());
    EXPECT_TRUE(lastReasonHas(L"its entry belongs to a library that it needs"));
    EXPECT_TRUE(linker().loadedModules().isEmpty());
    EXPECT_TRUE(traced.empty());
}

TEST_F(Linker, TakesOneModuleOfAName) {
    const TempFolder folder;
    const OdString twin = folder.path("libdrawing_good.so");
    std::filesystem::copy_file(std::filesystem::path(DRAWING_TEST_MODULES) / "libdrawing_good.so",
                               folder.path() / "libdrawing_good.so");
    const OdRxModulePtr module = loadByHandle(pathOf(L"libdrawing_good.so"));
    EXPECT_TRUE(loadByHandle(twin).isNull());
    EXPECT_EQ(lastFailure().reason, L"another module of this name is loaded");
    EXPECT_TRUE(linker().unloadModule(L"libdrawing_good.so"));
    const OdRxModulePtr other = loadByHandle(twin);
    ASSERT_FALSE(other.isNull());
    EXPECT_EQ(linker().loadedModule(L"libdrawing_good.so"), other);
}

TEST_F(Linker, ModulesLoadAndEndEachOther) {
    linker().addModuleFolder(moduleFolder);
    linker().loadModule(L"drawing_leaning", false);
    const auto modules = linker().loadedModules();
    ASSERT_EQ(modules.size(), 2u);
    EXPECT_EQ(modules.at(0)->moduleName(), L"libdrawing_good.so") << "it came up first";
    odUninitialize();
    EXPECT_EQ(traced, (Traces{L"good init", L"leaning init", L"leaning end", L"good end"}));
}

TEST_F(Linker, TheRuntimesEndEndsEveryModuleLastLoadedFirst) {
    linker().addModuleFolder(moduleFolder);
    const OdRxModulePtr kept = loadByHandle(L"libdrawing_good.so");
    loadByHandle(L"libdrawing_failing_end.so");
    EXPECT_EQ(raisedBy([] { odUninitialize(); }), eNoInterface);
    EXPECT_EQ(traced, (Traces{L"good init", L"failing init", L"good end"}));
    EXPECT_EQ(kept->moduleName(), L"libdrawing_good.so");
    EXPECT_EQ(OdRxModule::desc(), nullptr);
    odInitialize(&services);
    EXPECT_TRUE(linker().failures().isEmpty());
    EXPECT_TRUE(linker().loadModule(L"drawing_leaning", true).isNull()) << "folders outlived it";
}

// A service that its module left behind is released by code of a library that is still there.
TEST_F(Linker, CodeStaysWhenItsModuleGoes) {
    const OdRxDictionaryPtr dictionary(OdRxDictionary::desc()->create());
    dictionary->putAt(L"left behind", loadByHandle(pathOf(L"libdrawing_good.so")).get());
    odUninitialize();
    EXPECT_EQ(dictionary->getAt(L"left behind")->numRefs(), 2);
    EXPECT_EQ(dictionary->remove(L"left behind")->numRefs(), 1);
}
