// The stamp of a module: the version of the interfaces that it is compiled against. Compiled into
// every module, with the version in VEMO_STAMP_MAJOR and VEMO_STAMP_MINOR.
//
// It is an ELF note, so it can be read before any of the module's code runs, and it stays when the
// module is stripped. Whoever builds without CMake compiles this file along with the module.
#include <cstdint>

namespace {

constexpr std::uint32_t kInterfaceNote = 1;

struct InterfaceNote {
    std::uint32_t nameSize;
    std::uint32_t descriptorSize;
    std::uint32_t type;
    // Notes keep to multiples of four bytes.
    char name[8];
    std::uint32_t major;
    std::uint32_t minor;
};

__attribute__((used, section(".note.vemo.interface"), aligned(4)))
const InterfaceNote stamp = {sizeof "Vemo", 2 * sizeof(std::uint32_t), kInterfaceNote,
                             "Vemo",        VEMO_STAMP_MAJOR,          VEMO_STAMP_MINOR};

}  // namespace
