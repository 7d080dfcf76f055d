#include "elfdynamic.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::uint64_t kMostEntries = 1U << 16U;
constexpr std::uint64_t kMostSymbols = 1U << 20U;
// The top bit of a symbol's version marks one that isn't the default.
constexpr std::uint16_t kVersionIndex = 0x7fff;

[[noreturn]] void failWith(const OdChar* words) {
    throw OdError(OdString(words));
}

bool isForOthers(const Elf64_Sym& symbol) {
    const auto visibility = ELF64_ST_VISIBILITY(symbol.st_other);
    return ELF64_ST_BIND(symbol.st_info) != STB_LOCAL &&
           (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
}

}  // namespace

ElfDynamic::ElfDynamic(const ElfFile& elfFile) : file(elfFile), segments(elfFile.segments()) {
    const auto dynamic =
        std::find_if(segments.begin(), segments.end(),
                     [](const Elf64_Phdr& segment) { return segment.p_type == PT_DYNAMIC; });
    if (dynamic == segments.end()) {
        return;
    }
    entries = file.table<Elf64_Dyn>(dynamic->p_offset,
                                    std::min(kMostEntries, dynamic->p_filesz / sizeof(Elf64_Dyn)));
    const auto end = std::find_if(entries.begin(), entries.end(),
                                  [](const Elf64_Dyn& entry) { return entry.d_tag == DT_NULL; });
    entries.erase(end, entries.end());
}

void ElfDynamic::describe(OdRxModuleFileInfo& info) {
    const bool isProgram = (valueOf(DT_FLAGS_1).value_or(0) & DF_1_PIE) != 0;
    info.isSharedObject = file.type() == ET_DYN && !entries.empty() && !isProgram;
    readStrings();
    info.soName = textOf(DT_SONAME);
    info.runPath = textOf(DT_RUNPATH);
    info.rPath = textOf(DT_RPATH);
    for (const Elf64_Dyn& entry : entries) {
        if (entry.d_tag == DT_NEEDED) {
            info.needed.append(textAt(entry.d_un.d_val));
        }
    }
    readDefinedVersions();
    readNeededVersions();
    if (const auto symbols = offsetOfTable(DT_SYMTAB)) {
        addSymbols(info, *symbols, symbolCount());
    }
}

std::optional<std::uint64_t> ElfDynamic::valueOf(Elf64_Sxword tag) const {
    for (const Elf64_Dyn& entry : entries) {
        if (entry.d_tag == tag) {
            return entry.d_un.d_val;
        }
    }
    return std::nullopt;
}

std::optional<std::uint64_t> ElfDynamic::offsetOf(std::uint64_t address) const {
    for (const Elf64_Phdr& segment : segments) {
        if (segment.p_type == PT_LOAD && address >= segment.p_vaddr &&
            address - segment.p_vaddr < segment.p_filesz) {
            return segment.p_offset + (address - segment.p_vaddr);
        }
    }
    return std::nullopt;
}

std::optional<std::uint64_t> ElfDynamic::offsetOfTable(Elf64_Sxword tag) const {
    const auto address = valueOf(tag);
    if (!address) {
        return std::nullopt;
    }
    const auto offset = offsetOf(*address);
    if (!offset) {
        failWith(L"a table of the file lies outside its segments");
    }
    return offset;
}

void ElfDynamic::readStrings() {
    if (const auto offset = offsetOfTable(DT_STRTAB)) {
        strings = file.table<char>(*offset, valueOf(DT_STRSZ).value_or(0));
    }
}

OdAnsiString ElfDynamic::textAt(std::uint64_t position) {
    const std::string_view all(strings.data(), strings.size());
    const std::size_t end = position < all.size() ? all.find('\0', position) : all.npos;
    if (end == all.npos || end - position > budget) {
        failWith(L"a name of the file lies outside its strings, or its names are too long");
    }
    budget -= end - position;
    return OdAnsiString(all.substr(position, end - position));
}

OdAnsiString ElfDynamic::textOf(Elf64_Sxword tag) {
    const auto position = valueOf(tag);
    return position ? textAt(*position) : OdAnsiString();
}

void ElfDynamic::readDefinedVersions() {
    auto offset = offsetOfTable(DT_VERDEF);
    const std::uint64_t count = std::min(kMostEntries, valueOf(DT_VERDEFNUM).value_or(0));
    for (std::uint64_t i = 0; offset && i < count; ++i) {
        const auto definition = file.at<Elf64_Verdef>(*offset);
        // The base stands for the library itself and is no version of a symbol.
        if ((definition.vd_flags & VER_FLG_BASE) == 0) {
            versions[definition.vd_ndx & kVersionIndex] =
                file.at<Elf64_Verdaux>(*offset + definition.vd_aux).vda_name;
        }
        if (definition.vd_next == 0) {
            break;
        }
        *offset += definition.vd_next;
    }
}

void ElfDynamic::readNeededVersions() {
    auto offset = offsetOfTable(DT_VERNEED);
    const std::uint64_t count = valueOf(DT_VERNEEDNUM).value_or(0);
    std::uint64_t left = kMostEntries;
    for (std::uint64_t i = 0; offset && i < count && left > 0; ++i) {
        const auto need = file.at<Elf64_Verneed>(*offset);
        std::uint64_t place = *offset + need.vn_aux;
        --left;
        for (unsigned int j = 0; j < need.vn_cnt && left > 0; ++j, --left) {
            const auto version = file.at<Elf64_Vernaux>(place);
            versions[version.vna_other & kVersionIndex] = version.vna_name;
            place += version.vna_next;
        }
        if (need.vn_next == 0) {
            break;
        }
        *offset += need.vn_next;
    }
}

OdAnsiString ElfDynamic::versionOf(std::uint16_t index) {
    const auto found = versions.find(index & kVersionIndex);
    return found == versions.end() ? OdAnsiString() : textAt(found->second);
}

void ElfDynamic::addSymbols(OdRxModuleFileInfo& info, std::uint64_t offset, std::uint64_t count) {
    const auto symbols = file.table<Elf64_Sym>(offset, count);
    std::vector<std::uint16_t> indices;
    if (const auto table = offsetOfTable(DT_VERSYM)) {
        indices = file.table<std::uint16_t>(*table, count);
    }
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const Elf64_Sym& symbol = symbols[i];
        if (symbol.st_name == 0 || !isForOthers(symbol)) {
            continue;
        }
        const OdRxModuleSymbol entry{textAt(symbol.st_name),
                                     indices.empty() ? OdAnsiString() : versionOf(indices[i]),
                                     ELF64_ST_BIND(symbol.st_info) == STB_WEAK};
        (symbol.st_shndx == SHN_UNDEF ? info.undefined : info.defined).append(entry);
    }
}

// The section doesn't say how many symbols there are. Of the hash tables the older kind counts them
// all; the newer one leaves out the undefined ones, and when nothing is defined it doesn't tell
// where these end, but the section headers may.
std::uint64_t ElfDynamic::symbolCount() const {
    std::uint64_t count = 0;
    if (const auto hash = offsetOfTable(DT_HASH)) {
        count = file.at<std::uint32_t>(*hash + sizeof(std::uint32_t));
    } else if (const auto newer = offsetOfTable(DT_GNU_HASH)) {
        count = hashedSymbols(*newer);
    }
    for (const Elf64_Shdr& section : file.sections()) {
        if (section.sh_type == SHT_DYNSYM && section.sh_addr == valueOf(DT_SYMTAB)) {
            count = std::max(count, section.sh_size / sizeof(Elf64_Sym));
        }
    }
    if (count > kMostSymbols) {
        failWith(L"too many symbols");
    }
    return count;
}

std::uint64_t ElfDynamic::hashedSymbols(std::uint64_t offset) const {
    struct Header {
        std::uint32_t buckets;
        std::uint32_t firstSymbol;
        std::uint32_t filters;
        std::uint32_t shift;
    };
    const auto header = file.at<Header>(offset);
    offset += sizeof header + std::uint64_t{header.filters} * sizeof(std::uint64_t);
    const auto buckets = file.table<std::uint32_t>(offset, header.buckets);
    const std::uint64_t chains = offset + buckets.size() * sizeof(std::uint32_t);
    const auto last = std::max_element(buckets.begin(), buckets.end());
    if (last == buckets.end() || *last < header.firstSymbol) {
        return header.firstSymbol;
    }
    // The last of a chain has its lowest bit set.
    std::uint64_t symbol = *last;
    while (symbol < kMostSymbols &&
           (file.at<std::uint32_t>(chains + (symbol - header.firstSymbol) * sizeof(std::uint32_t)) &
            1U) == 0) {
        ++symbol;
    }
    return symbol + 1;
}
