// The dynamic section of an ELF file: the libraries that it needs and its dynamic symbols, with the
// versions that go with them. Raises as ElfFile does.
#pragma once

#include <map>
#include <optional>

#include "drawing/rxmodulefile.h"
#include "elffile.h"

class ElfDynamic {
  public:
    /// The file has to outlive the object.
    explicit ElfDynamic(const ElfFile& elfFile);

    /// Adds what the section says.
    void describe(OdRxModuleFileInfo& info);

  private:
    std::optional<std::uint64_t> valueOf(Elf64_Sxword tag) const;
    std::optional<std::uint64_t> offsetOf(std::uint64_t address) const;
    std::optional<std::uint64_t> offsetOfTable(Elf64_Sxword tag) const;
    OdAnsiString textAt(std::uint64_t position);
    OdAnsiString textOf(Elf64_Sxword tag);
    void readStrings();
    void readDefinedVersions();
    void readNeededVersions();
    void addSymbols(OdRxModuleFileInfo& info, std::uint64_t offset, std::uint64_t count);
    OdAnsiString versionOf(std::uint16_t index);
    std::uint64_t symbolCount() const;
    std::uint64_t hashedSymbols(std::uint64_t offset) const;

    const ElfFile& file;
    std::vector<Elf64_Phdr> segments;
    std::vector<Elf64_Dyn> entries;
    std::vector<char> strings;
    // Where in the strings the name of a version stands, by the version's index.
    std::map<std::uint16_t, std::uint64_t> versions;
    // How many bytes of names may still be copied. Names may share their bytes in the file.
    std::uint64_t budget = std::uint64_t{64} << 20;
};
