#include "moduleversion.h"

#include <algorithm>
#include <cstring>

#include "elfarchitecture.h"
#include "moduleplace.h"

namespace {

constexpr char kStampName[] = "Vemo";
constexpr std::uint32_t kInterfaceNote = 1;
// Notes of a library are a few hundred bytes.
constexpr std::uint64_t kMostNotes = std::uint64_t{64} << 10;

std::uint64_t padded(std::uint64_t position, std::uint64_t alignment) {
    return (position + alignment - 1) / alignment * alignment;
}

bool isStamp(const Elf64_Nhdr& note, const char* name) {
    return note.n_type == kInterfaceNote && note.n_namesz == sizeof kStampName &&
           note.n_descsz == sizeof(OdRxInterfaceVersion) &&
           std::memcmp(name, kStampName, sizeof kStampName) == 0;
}

OdString architectureText(const ElfIdentity& identity) {
    return OdUtf8StringToOdString(architectureOf(identity));
}

std::optional<OdRxInterfaceVersion> stampAmong(const std::vector<char>& notes,
                                               std::uint64_t alignment) {
    std::uint64_t position = 0;
    while (position + sizeof(Elf64_Nhdr) <= notes.size()) {
        Elf64_Nhdr note;
        std::memcpy(&note, &notes[position], sizeof note);
        const std::uint64_t name = position + sizeof note;
        const std::uint64_t descriptor = padded(name + note.n_namesz, alignment);
        const std::uint64_t end = descriptor + note.n_descsz;
        if (end > notes.size()) {
            break;
        }
        if (isStamp(note, notes.data() + name)) {
            OdRxInterfaceVersion version;
            std::memcpy(&version.major, &notes[descriptor], sizeof version.major);
            std::memcpy(&version.minor, &notes[descriptor + sizeof version.major],
                        sizeof version.minor);
            return version;
        }
        position = padded(end, alignment);
    }
    return std::nullopt;
}

}  // namespace

OdRxInterfaceVersion odInterfaceVersion() {
    return {VEMO_OWN_INTERFACES};
}

OdString odInterfacesRefused(OdRxInterfaceVersion built, OdRxInterfaceVersion own) {
    return OdString().format(L"built against interfaces %u.%u, and this is %u.%u", built.major,
                             built.minor, own.major, own.minor);
}

std::optional<OdRxInterfaceVersion> moduleStampOf(const ElfFile& file) {
    for (const Elf64_Phdr& segment : file.segments()) {
        if (segment.p_type != PT_NOTE) {
            continue;
        }
        const auto notes =
            file.table<char>(segment.p_offset, std::min(segment.p_filesz, kMostNotes));
        if (auto version = stampAmong(notes, segment.p_align == 8 ? 8 : 4)) {
            return version;
        }
    }
    return std::nullopt;
}

OdString moduleRefusal(const OdString& path) {
    if (OdString refusal = placeRefusal(path); !refusal.isEmpty()) {
        return refusal;
    }
    try {
        const ElfFile file(path);
        if (file.identity() != ownElfIdentity()) {
            // The system's loader says of such a file that it isn't there.
            return OdString(L"built for ") + architectureText(file.identity()) +
                   L", and this machine is " + architectureText(ownElfIdentity());
        }
        if (!file.isReadable()) {
            return {};
        }
        if (file.isCut()) {
            return L"the file is cut short";
        }
        const auto built = moduleStampOf(file);
        const OdRxInterfaceVersion own = odInterfaceVersion();
        if (built && !odAcceptsInterfaces(*built, own)) {
            return odInterfacesRefused(*built, own);
        }
    } catch (const OdError&) {
        // The loader finds words of its own for such a file.
    }
    return {};
}
