#include "elfarchitecture.h"

#include <string>

namespace {

struct ArchitectureName {
    ElfIdentity identity;
    const char* name;
};

constexpr std::uint16_t kLoongArch = 258;

constexpr ArchitectureName architectureNames[] = {
    {{ELFCLASS64, ELFDATA2LSB, EM_X86_64}, "x86_64"},
    {{ELFCLASS32, ELFDATA2LSB, EM_X86_64}, "x32"},
    {{ELFCLASS32, ELFDATA2LSB, EM_386}, "i386"},
    {{ELFCLASS64, ELFDATA2LSB, EM_AARCH64}, "aarch64"},
    {{ELFCLASS64, ELFDATA2MSB, EM_AARCH64}, "aarch64_be"},
    {{ELFCLASS32, ELFDATA2LSB, EM_ARM}, "arm"},
    {{ELFCLASS64, ELFDATA2LSB, EM_RISCV}, "riscv64"},
    {{ELFCLASS32, ELFDATA2LSB, EM_RISCV}, "riscv32"},
    {{ELFCLASS64, ELFDATA2LSB, kLoongArch}, "loongarch64"},
    {{ELFCLASS64, ELFDATA2LSB, EM_PPC64}, "ppc64le"},
    {{ELFCLASS64, ELFDATA2MSB, EM_PPC64}, "ppc64"},
    {{ELFCLASS64, ELFDATA2MSB, EM_S390}, "s390x"},
    {{ELFCLASS64, ELFDATA2LSB, EM_MIPS}, "mips64el"},
};

}  // namespace

OdAnsiString architectureOf(const ElfIdentity& identity) {
    for (const ArchitectureName& row : architectureNames) {
        if (row.identity == identity) {
            return row.name;
        }
    }
    return "machine " + std::to_string(identity.machine);
}
