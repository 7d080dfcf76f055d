// Versions of the interfaces in modules, and files of which no byte is to be trusted.
#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <iterator>
#include <random>
#include <vector>

#include "testsupport.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kLater = 7;

std::string contentOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string stampedModule() {
    return contentOf(fs::path(DRAWING_TEST_MODULES) / "libdrawing_stamped.so");
}

// The module with another version in its stamp.
std::string moduleOfVersion(OdRxInterfaceVersion version) {
    std::string bytes = stampedModule();
    const char noteStart[] = "\5\0\0\0\10\0\0\0\1\0\0\0Vemo\0\0\0";
    const std::size_t note = bytes.find(std::string(noteStart, sizeof noteStart));
    EXPECT_NE(note, std::string::npos) << "no stamp";
    std::memcpy(&bytes.at(note + sizeof noteStart), &version.major, sizeof version.major);
    std::memcpy(&bytes.at(note + sizeof noteStart + 4), &version.minor, sizeof version.minor);
    return bytes;
}

// The offset of the file's first program header of the type.
std::size_t segmentOf(const std::string& bytes, std::uint32_t type) {
    Elf64_Ehdr header;
    std::memcpy(&header, bytes.data(), sizeof header);
    for (std::size_t i = 0; i < header.e_phnum; ++i) {
        const std::size_t offset = header.e_phoff + i * sizeof(Elf64_Phdr);
        if (std::memcmp(&bytes.at(offset), &type, sizeof type) == 0) {
            return offset;
        }
    }
    ADD_FAILURE() << "no such segment";
    return 0;
}

class ModuleStamp : public RuntimeTest {
  protected:
    void SetUp() override {
        RuntimeTest::SetUp();
        setenv("DRAWING_TEST_WITNESS", (folder.path() / "witness").c_str(), 1);
    }

    static OdRxInterfaceVersion own() { return odInterfaceVersion(); }
    bool codeRan() const { return fs::exists(folder.path() / "witness"); }
    OdRxModulePtr load(const OdString& path) { return odrxDynamicLinker()->loadModule(path, true); }
    OdString reason() const {
        const auto failures = odrxDynamicLinker()->failures();
        return failures.isEmpty() ? OdString() : failures.last().reason;
    }
    void expectRefused(OdRxInterfaceVersion built) {
        const OdString path = folder.write("librefused.so", moduleOfVersion(built));
        EXPECT_TRUE(load(path).isNull());
        EXPECT_EQ(reason(), OdString().format(L"built against interfaces %u.%u, and this is %u.%u",
                                              built.major, built.minor, own().major, own().minor));
        EXPECT_EQ(services.loadModuleLib(path, true), nullptr);
        EXPECT_EQ(raisedBy([&] { services.loadModuleLib(path, false); }), eCantOpenFile);
        EXPECT_EQ(raisedBy([&] { odrxDynamicLinker()->loadModule(path, false); }), eCantOpenFile);
        odrxDynamicLinker()->addModuleFolder(folder.path("").left(folder.path("").getLength() - 1));
        EXPECT_TRUE(load(L"refused").isNull()) << "found by its name in the linker's folder";
        EXPECT_EQ(services.loadModuleLib(L"librefused.so", true), nullptr);
        EXPECT_FALSE(codeRan());
        fs::remove(folder.path() / "librefused.so");
    }

    TempFolder folder;
};

}  // namespace

TEST(InterfaceVersion, OneMajorAndNoNewerMinor) {
    EXPECT_TRUE(odAcceptsInterfaces({1, 3}, {1, 3}));
    EXPECT_TRUE(odAcceptsInterfaces({1, 0}, {1, 3}));
    EXPECT_FALSE(odAcceptsInterfaces({1, 4}, {1, 3}));
    EXPECT_FALSE(odAcceptsInterfaces({0, 3}, {1, 3}));
    EXPECT_FALSE(odAcceptsInterfaces({2, 0}, {1, 3}));
}

TEST_F(ModuleStamp, RefusesOtherInterfacesBeforeAnyCodeRuns) {
    expectRefused({own().major + 1, 0});
    expectRefused({own().major + 1, own().minor});
    expectRefused({own().major, own().minor + kLater});
    expectRefused({0xffffffffU, 0xffffffffU});
}

TEST_F(ModuleStamp, TakesItsOwnAndOlderOnesAndThoseThatDontSay) {
    EXPECT_EQ(odReadModuleFile(folder.write("libown.so", stampedModule())).stamp, own());
    EXPECT_FALSE(load(folder.path("libown.so")).isNull());
    EXPECT_TRUE(codeRan());
    EXPECT_FALSE(load(folder.write("libolder.so", moduleOfVersion({own().major, own().minor / 2})))
                     .isNull());
    const OdString unstamped =
        OdUtf8StringToOdString(DRAWING_TEST_MODULES) + L"/libdrawing_good.so";
    EXPECT_EQ(odReadModuleFile(unstamped).stamp, std::nullopt);
    EXPECT_FALSE(load(unstamped).isNull());
    EXPECT_TRUE(odrxDynamicLinker()->failures().isEmpty());
}

TEST_F(ModuleStamp, ALoadedLibraryIsNotRefusedForTheFileInItsPlace) {
    const OdString path = folder.write("libreplaced.so", stampedModule());
    OdRxModuleLibrary* library = services.loadModuleLib(path, false);
    fs::remove(folder.path() / "libreplaced.so");
    folder.write("libreplaced.so", moduleOfVersion({own().major + 1, 0}));
    EXPECT_EQ(services.loadModuleLib(path, false), library);
}

// Somebody else has mapped it, so the loader knows a file for the bare name.
TEST_F(ModuleStamp, RefusesByBareNameWhatTheLoaderFinds) {
    const OdString path = folder.write("libmapped.so", moduleOfVersion({own().major + 1, 0}));
    ASSERT_NE(dlopen(OdStringToUtf8String(path), RTLD_NOW | RTLD_LOCAL), nullptr);
    EXPECT_TRUE(load(L"libdrawing_stamped.so").isNull());
    EXPECT_GE(reason().find(L"built against"), 0);
    EXPECT_TRUE(load(L"libdrawing_stamped.so").isNull()) << "at the second attempt";
    EXPECT_TRUE(odrxDynamicLinker()->loadedModules().isEmpty());
}

TEST_F(ModuleStamp, SurvivesStripping) {
    const fs::path path = folder.path() / "libstripped.so";
    folder.write("libstripped.so", moduleOfVersion({own().major + 1, 2}));
    const auto before = fs::file_size(path);
    ASSERT_EQ(std::system((std::string(DRAWING_TEST_STRIP) + " " + path.string()).c_str()), 0);
    ASSERT_LT(fs::file_size(path), before);
    EXPECT_EQ(odReadModuleFile(folder.path("libstripped.so")).stamp,
              (OdRxInterfaceVersion{own().major + 1, 2}));
}

TEST_F(ModuleStamp, WhatIsNoModuleIsLeftToTheLoader) {
    EXPECT_TRUE(load(folder.write("libtext.so", "no library")).isNull());
    EXPECT_GE(reason().find(L"file too short"), 0);
    const std::string newer = moduleOfVersion({own().major + 1, 0});
    EXPECT_TRUE(load(folder.write("libcut.so", newer.substr(0, 2000))).isNull());
    EXPECT_EQ(reason(), L"the file is cut short");
    EXPECT_FALSE(codeRan());
    EXPECT_TRUE(load(folder.path("")).isNull());
    EXPECT_TRUE(load(folder.path("nowhere.so")).isNull());
    EXPECT_GE(reason().find(L"No such file"), 0);
}

TEST(ModuleFile, TellsWhatItReads) {
    const auto file = odReadModuleFile(OdUtf8StringToOdString(DRAWING_TEST_MODULES) +
                                       L"/libdrawing_undefined.so");
    EXPECT_EQ(file.fault, L"");
    EXPECT_TRUE(file.isElf && file.isOwnArchitecture && file.isSharedObject);
    EXPECT_FALSE(file.definesEntry);
    ASSERT_EQ(file.defined.size(), 1u);
    EXPECT_EQ(file.defined[0].name, "drawingCallsNowhere");
    bool strong = false;
    for (const OdRxModuleSymbol& symbol : file.undefined) {
        strong = strong || (symbol.name == "drawingNowhereDefined" && !symbol.isWeak);
    }
    EXPECT_TRUE(strong);

    const auto program = odReadModuleFile(L"/proc/self/exe");
    EXPECT_TRUE(program.isElf && !program.isSharedObject);
    bool versioned = false;
    for (const OdRxModuleSymbol& symbol : program.undefined) {
        versioned = versioned || symbol.version.view().starts_with("GLIBC_");
    }
    EXPECT_TRUE(versioned);
    bool needsRuntime = false;
    for (const OdAnsiString& library : program.needed) {
        needsRuntime = needsRuntime || library.view().starts_with("libvemodrawing.so");
    }
    EXPECT_TRUE(needsRuntime);
}

TEST(ModuleFile, NamesWhatItCantRead) {
    const TempFolder folder;
    EXPECT_EQ(odReadModuleFile(folder.path("nowhere")).fault, L"No such file or directory");
    EXPECT_EQ(odReadModuleFile(folder.path("")).fault, L"a folder");
    EXPECT_EQ(odReadModuleFile(L"/dev/zero").fault, L"no regular file");
    EXPECT_EQ(odReadModuleFile(folder.write("text", "no library")).fault, L"no ELF file");
    EXPECT_EQ(odReadModuleFile(folder.write("empty", "")).fault, L"no ELF file");

    std::string bytes = stampedModule();
    bytes.at(EI_CLASS) = ELFCLASS32;
    bytes.at(offsetof(Elf32_Ehdr, e_machine)) = EM_ARM;
    const auto arm = odReadModuleFile(folder.write("arm", bytes));
    EXPECT_EQ(arm.architecture, "arm");
    EXPECT_FALSE(arm.isOwnArchitecture);
    bytes.at(EI_CLASS) = ELFCLASS64;
    bytes.at(EI_DATA) = ELFDATA2MSB;
    bytes.at(offsetof(Elf32_Ehdr, e_machine)) = 0;
    bytes.at(offsetof(Elf32_Ehdr, e_machine) + 1) = EM_S390;
    EXPECT_EQ(odReadModuleFile(folder.write("s390", bytes)).architecture, "s390x");
}

TEST(ModuleFile, BelievesNoSize) {
    const TempFolder folder;
    std::string bytes = stampedModule();
    const std::uint64_t size = std::uint64_t{1} << 39U;
    std::memcpy(&bytes.at(segmentOf(bytes, PT_NOTE) + offsetof(Elf64_Phdr, p_filesz)), &size,
                sizeof size);
    const OdString path = folder.write("libsparse.so", bytes);
    EXPECT_GE(odReadModuleFile(path).fault.find(L"too short"), 0);
    std::memcpy(&bytes.at(segmentOf(bytes, PT_DYNAMIC) + offsetof(Elf64_Phdr, p_filesz)), &size,
                sizeof size);
    folder.write("libsparse.so", bytes);
    // Where the file system has files with holes, the sizes may even be true.
    if (truncate(OdStringToUtf8String(path), off_t{1} << 40) == 0) {
        EXPECT_EQ(odReadModuleFile(path).stamp, odInterfaceVersion());
    }
}

// What comes of it doesn't matter, as long as something does.
TEST(ModuleFile, OutlivesDamagedFiles) {
    const TempFolder folder;
    const std::string sound = stampedModule();
    const OdAnsiString path = OdStringToUtf8String(folder.write("libdamaged.so", sound));
    const int file = open(path, O_RDWR | O_CLOEXEC);
    ASSERT_GE(file, 0);
    std::mt19937 random(1);
    int faults = 0;
    for (int round = 0; round < 3000; ++round) {
        // Half of the damage goes where the headers and the dynamic tables are.
        const std::size_t reach = round % 2 == 0 ? 4096 : sound.size();
        std::vector<std::size_t> places;
        for (int flip = 0; flip < 1 + round % 4; ++flip) {
            places.push_back(random() % reach);
            const char byte = static_cast<char>(random());
            ASSERT_EQ(pwrite(file, &byte, 1, static_cast<off_t>(places.back())), 1);
        }
        faults += odReadModuleFile(OdUtf8StringToOdString(path)).fault.isEmpty() ? 0 : 1;
        for (const std::size_t place : places) {
            ASSERT_EQ(pwrite(file, &sound[place], 1, static_cast<off_t>(place)), 1);
        }
    }
    EXPECT_GT(faults, 0);
    EXPECT_EQ(odReadModuleFile(OdUtf8StringToOdString(path)).fault, L"") << "wasn't mended";
    for (std::size_t size = sound.size(); size > 64; size = size * 31 / 32) {
        ASSERT_EQ(ftruncate(file, static_cast<off_t>(size - 1)), 0);
        odReadModuleFile(OdUtf8StringToOdString(path));
    }
    EXPECT_NE(odReadModuleFile(OdUtf8StringToOdString(path)).fault, L"");
    close(file);
}
