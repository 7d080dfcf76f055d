// Each answer is held against the loader's own, which comes last: by then the library's code has
// run.
#include <elf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <modulecheck.h>
#include <unistd.h>

#include <cstddef>

#include "support/testfolder.h"

namespace {

using inspect::checkModule;
using inspect::ModuleCheck;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

const std::string inspectedFolder = INSPECTED_MODULES;

class InspectedModule : public testing::Test {
  protected:
    void SetUp() override {
        odInitialize(&services);
        setenv("INSPECTED_WITNESS", folder.path("witness").c_str(), 1);
    }
    void TearDown() override { odUninitialize(); }

    /// The check's answer, which it gives without running anything and as the linker would.
    ModuleCheck checked(const std::string& path) {
        ModuleCheck check = checkModule(path);
        EXPECT_EQ(check.path, path);
        EXPECT_FALSE(fs::exists(folder.path("witness"))) << "code ran";
        EXPECT_EQ(check.ok, check.reasons.empty());
        const OdString name = OdUtf8StringToOdString(path);
        EXPECT_EQ(check.ok, !odrxDynamicLinker()->loadModule(name, true).isNull());
        return check;
    }
    std::string copy(const std::string& name) const {
        fs::copy_file(inspectedFolder + "/" + name, folder.path(name));
        return folder.path(name);
    }
    // A copy of the good module beside its library, changed.
    template <class Change>
    std::string changed(Change&& change) const {
        copy("libinspected_helper.so");
        std::string bytes = contentOf(inspectedFolder + "/libinspected_good.so");
        change(bytes);
        return folder.file("libchanged.so", bytes);
    }

    OdStaticRxObject<ExSystemServices> services;
    TestFolder folder;
};

}  // namespace

TEST_F(InspectedModule, Good) {
    copy("libinspected_helper.so");
    const ModuleCheck check = checked(copy("libinspected_good.so"));
    EXPECT_THAT(check.reasons, IsEmpty());
    EXPECT_TRUE(check.isOwnArchitecture && check.interfaceAccepted && check.hasEntry);
    EXPECT_EQ(check.interfaceVersion, odInterfaceVersion());
}

TEST_F(InspectedModule, PlaceThatEveryoneMayWrite) {
    copy("libinspected_helper.so");
    const std::string path = copy("libinspected_good.so");
    fs::permissions(folder.path(), fs::perms::all);
    EXPECT_THAT(checked(path).reasons, ElementsAre(HasSubstr("everyone may write its folder")));
}

TEST_F(InspectedModule, MissingLibrary) {
    const ModuleCheck check = checked(copy("libinspected_good.so"));
    EXPECT_THAT(check.missingLibraries, ElementsAre("libinspected_helper.so"));
    EXPECT_THAT(check.reasons, ElementsAre("it needs libinspected_helper.so, which isn't found"));
}

TEST_F(InspectedModule, LibraryThatIsNone) {
    folder.file("libinspected_helper.so", "text");
    const ModuleCheck check = checked(copy("libinspected_good.so"));
    EXPECT_THAT(check.missingLibraries, ElementsAre("libinspected_helper.so"));
    EXPECT_THAT(check.reasons, ElementsAre(HasSubstr("no ELF file")));
}

TEST_F(InspectedModule, UnresolvedSymbol) {
    const ModuleCheck check = checked(copy("libinspected_undefined.so"));
    const std::string name = "inspected::geometry::volume(double, char const*)";
    EXPECT_THAT(check.unresolvedSymbols, ElementsAre(name));
    EXPECT_THAT(check.reasons, ElementsAre("it uses " + name + ", which nobody defines"));
    EXPECT_TRUE(check.hasEntry && check.interfaceAccepted && !check.interfaceVersion);
}

TEST_F(InspectedModule, LibraryWithAnUnresolvedSymbol) {
    copy("libinspected_good.so");
    fs::copy_file(inspectedFolder + "/libinspected_undefined.so",
                  folder.path("libinspected_helper.so"));
    const ModuleCheck check = checked(folder.path("libinspected_good.so"));
    EXPECT_EQ(check.unresolvedSymbols.size(), 2u);
    EXPECT_THAT(check.reasons,
                testing::Contains(folder.path("libinspected_helper.so") +
                                  " uses inspected::geometry::volume(double, char const*), which "
                                  "nobody defines"));
}

TEST_F(InspectedModule, OtherArchitecture) {
    const ModuleCheck check = checked(changed([](std::string& bytes) {
        bytes[offsetof(Elf64_Ehdr, e_machine)] = static_cast<char>(EM_RISCV);
    }));
    EXPECT_EQ(check.architecture, "riscv64");
    EXPECT_FALSE(check.isOwnArchitecture);
    EXPECT_THAT(check.reasons, ElementsAre(HasSubstr("it is for riscv64, and this is ")));
}

TEST_F(InspectedModule, OtherInterfaces) {
    const ModuleCheck check = checked(changed([](std::string& bytes) {
        const std::string stampName("Vemo\0\0\0\0", 8);
        ++bytes.at(bytes.find(stampName) + stampName.size());
    }));
    const std::uint32_t major = odInterfaceVersion().major + 1;
    EXPECT_FALSE(check.interfaceAccepted);
    EXPECT_EQ(check.interfaceVersion, (OdRxInterfaceVersion{major, odInterfaceVersion().minor}));
    EXPECT_THAT(check.reasons,
                ElementsAre(HasSubstr("it was built against interfaces " + std::to_string(major))));
}

TEST_F(InspectedModule, NoModule) {
    EXPECT_THAT(checked("/proc/self/exe").reasons, ElementsAre("it is no shared object"));
    EXPECT_THAT(checked(copy("libinspected_helper.so")).reasons,
                ElementsAre("it defines no odrxCreateModuleObject, so it is no module"));
}

TEST_F(InspectedModule, NoLibrary) {
    EXPECT_THAT(checked(folder.file("libtext.so", "text")).reasons,
                ElementsAre("it can't be read as a library: no ELF file"));
    EXPECT_THAT(checked(folder.folder("libfolder.so")).reasons, ElementsAre(HasSubstr("a folder")));
    EXPECT_THAT(checked(folder.path("nowhere.so")).reasons, ElementsAre(HasSubstr("No such file")));
    const std::string cut = contentOf(inspectedFolder + "/libinspected_good.so").substr(0, 2000);
    EXPECT_THAT(checked(folder.file("libcut.so", cut)).reasons,
                ElementsAre("it is damaged: the file is cut short"));
    const std::string closed = folder.file("libclosed.so", "text");
    fs::permissions(closed, fs::perms::none);
    const auto reasons = checked(closed).reasons;
    if (geteuid() != 0) {
        EXPECT_THAT(reasons, ElementsAre(HasSubstr("Permission denied")));
    }
    EXPECT_FALSE(reasons.empty());
}

// Its libraries need libraries in turn, which this program hasn't mapped.
TEST_F(InspectedModule, ApplicationsOwn) {
    const ModuleCheck check = checkModule(APPLICATION_MODULE);
    EXPECT_THAT(check.reasons, IsEmpty());
    EXPECT_EQ(check.interfaceVersion, odInterfaceVersion());
}
