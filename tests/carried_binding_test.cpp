// A program that carries the library's objects and loads modules that were linked to its shared
// object: there is one application in the process.
#include <dlfcn.h>

#include <string>
#include <vector>

#include "boot_support.h"
#include "core/vemoversion.h"
#include "slotbinding.h"
#include "voappservice.h"

namespace {

using testing::Contains;

class CarriedBindingTest : public BootTest {
  protected:
    void SetUp() override {
        configure({.coreLibrary = "[]", .library = R"(["binding"])"});
        ASSERT_EQ(boot(), kVemoNoMainWindow);
    }

    static std::vector<void*> functionsOfModule() {
        void* module = dlopen(VEMO_BINDING_MODULE, RTLD_NOW | RTLD_NOLOAD);
        using Functions = void (*)(std::vector<void*>&);
        const auto read = reinterpret_cast<Functions>(dlsym(module, "bindingFunctions"));
        std::vector<void*> functions;
        read(functions);
        dlclose(module);
        return functions;
    }
};

TEST_F(CarriedBindingTest, ModuleAndProgramShareOneApplication) {
    const OdRxModulePtr module = odrxDynamicLinker()->loadedModule(L"libbinding.so");
    EXPECT_EQ(vo_arbitDict_getservice(L"Test/Binding").get(), module.get());
    EXPECT_THAT(journal::lines(), Contains("ExeRootPath " + folder.path("bin")));
}

TEST_F(CarriedBindingTest, ModulesBindToTheProgramsFunctions) {
    // The shared object is in the process too, so that a module could be bound to it.
    const std::string name = "libvemo_root.so." + std::to_string(VEMO_VERSION_MAJOR);
    void* library = dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    dlclose(library);
    EXPECT_EQ(functionsOfModule(), exportedFunctions());
}

TEST_F(CarriedBindingTest, LookUpsByNameFindTheProgramsFunctions) {
    for (void* function : exportedFunctions()) {
        Dl_info place{};
        ASSERT_NE(dladdr(function, &place), 0);
        ASSERT_NE(place.dli_sname, nullptr) << "a function that the program doesn't export";
        EXPECT_EQ(dlsym(RTLD_DEFAULT, place.dli_sname), function) << place.dli_sname;
    }
    EXPECT_EQ(vodbSystemServices(), g_appService);
}

}  // namespace
