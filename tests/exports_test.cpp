// The library's dynamic symbols: what it defines for others is the listed functions and no more.
#include <cxxabi.h>
#include <elf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

// An ELF file of the machine's own word size, whole in memory.
class ElfFile {
  public:
    explicit ElfFile(const char* path) {
        std::ifstream stream(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(stream), {});
    }

    std::vector<Elf64_Shdr> sections() const {
        const auto header = at<Elf64_Ehdr>(0);
        std::vector<Elf64_Shdr> found;
        for (std::size_t index = 0; index < header.e_shnum; ++index) {
            found.push_back(at<Elf64_Shdr>(header.e_shoff + index * header.e_shentsize));
        }
        return found;
    }

    std::vector<Elf64_Sym> symbols(const Elf64_Shdr& table) const {
        std::vector<Elf64_Sym> found;
        for (std::size_t offset = 0; offset < table.sh_size; offset += table.sh_entsize) {
            found.push_back(at<Elf64_Sym>(table.sh_offset + offset));
        }
        return found;
    }

    std::string name(const Elf64_Shdr& names, const Elf64_Sym& symbol) const {
        return bytes.data() + names.sh_offset + symbol.st_name;
    }

  private:
    template <class T>
    T at(std::size_t offset) const {
        T value;
        std::memcpy(&value, &bytes.at(offset), sizeof value);
        return value;
    }

    std::string bytes;
};

std::string demangled(const std::string& name) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), std::free);
    return status == 0 ? text.get() : name;
}

// Defined for others, but for the symbol that stands for the version itself. Local symbols are of
// the linker's making: on some machines a library's sections have some.
bool isExported(const Elf64_Sym& symbol) {
    return symbol.st_shndx != SHN_UNDEF && symbol.st_shndx != SHN_ABS &&
           ELF64_ST_BIND(symbol.st_info) != STB_LOCAL;
}

std::vector<std::string> definedSymbols(const char* path) {
    const ElfFile file(path);
    const auto sections = file.sections();
    std::vector<std::string> names;
    for (const Elf64_Shdr& table : sections) {
        if (table.sh_type != SHT_DYNSYM) {
            continue;
        }
        for (const Elf64_Sym& symbol : file.symbols(table)) {
            if (isExported(symbol)) {
                names.push_back(demangled(file.name(sections.at(table.sh_link), symbol)));
            }
        }
    }
    return names;
}

TEST(Exports, AreTheListedFunctionsAndNoMore) {
    EXPECT_THAT(
        definedSymbols(VEMO_ROOT_LIBRARY),
        testing::UnorderedElementsAre(
            "vemo_root(char**, int, VoMainAppCallback*)", "vemo_exit(VoMainAppCallback*)",
            "vo_arbitDict_regservice(OdString const&, OdSmartPtr<OdRxObject>)",
            "vo_arbitDict_clearservice(OdString const&)",
            "vo_arbitDict_getservice(OdString const&)", "vo_sys_config(OdAnsiString const&)",
            "vo_runtime_config(OdAnsiString const&)", "vo_user_config(OdAnsiString const&, int)",
            "vo_save_user_config(OdAnsiString const&)", "vo_notify_user_config_changed(VoJsonPtr)",
            "vo_build_timestamp()", "vo_is_appQuiting()", "voLoad_extModule(OdString const&, bool)",
            "voUnload_extModule(OdString const&)", "vodbSystemServices()"));
}

}  // namespace
