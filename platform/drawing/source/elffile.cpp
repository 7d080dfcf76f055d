#include "elffile.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace {

constexpr std::uint64_t kLargestTable = std::uint64_t{32} << 20;
constexpr std::uint8_t kOwnByteOrder =
    std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;

[[noreturn]] void failWithSystemError() {
    throw OdError(OdUtf8StringToOdString(std::system_category().message(errno)));
}

// Opening never waits for the other end of a pipe.
int openToRead(const OdString& path) {
    const OdAnsiString name = OdStringToUtf8String(path);
    int file = -1;
    do {
        file = open(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    } while (file < 0 && errno == EINTR);
    if (file < 0) {
        failWithSystemError();
    }
    return file;
}

// The header's first 20 bytes are the same in both classes.
ElfIdentity identityOf(const unsigned char* header, std::uint16_t machine) {
    return {header[EI_CLASS], header[EI_DATA], machine};
}

}  // namespace

ElfIdentity ownElfIdentity() {
    // The library's own header is mapped where the library begins.
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&ownElfIdentity), &info) == 0) {
        return {};
    }
    std::array<unsigned char, EI_NIDENT> bytes{};
    std::memcpy(bytes.data(), info.dli_fbase, bytes.size());
    std::uint16_t machine = EM_NONE;
    std::memcpy(&machine,
                static_cast<const char*>(info.dli_fbase) + offsetof(Elf64_Ehdr, e_machine),
                sizeof machine);
    return identityOf(bytes.data(), machine);
}

ElfFile::ElfFile(const OdString& path) : file(openToRead(path)) {
    try {
        readHeader();
    } catch (...) {
        close(file);
        throw;
    }
}

ElfFile::~ElfFile() {
    close(file);
}

void ElfFile::readHeader() {
    struct stat status {};
    if (fstat(file, &status) != 0) {
        failWithSystemError();
    }
    if (!S_ISREG(status.st_mode)) {
        throw OdError(OdString(S_ISDIR(status.st_mode) ? L"a folder" : L"no regular file"));
    }
    fileSize = static_cast<std::uint64_t>(status.st_size);
    const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(fileSize, head.size()));
    readFromDisk(0, head.data(), length);
    headLength = length;
    const auto bytes = table<unsigned char>(0, std::min<std::uint64_t>(fileSize, EI_NIDENT));
    if (bytes.size() < SELFMAG || std::memcmp(bytes.data(), ELFMAG, SELFMAG) != 0) {
        throw OdError(OdString(L"no ELF file"));
    }
    const auto order = at<unsigned char>(EI_DATA);
    const auto inFileOrder = [&](std::uint16_t value) {
        return order == kOwnByteOrder ? value
                                      : static_cast<std::uint16_t>((value << 8U) | (value >> 8U));
    };
    fileType = inFileOrder(at<std::uint16_t>(offsetof(Elf64_Ehdr, e_type)));
    const auto machine = inFileOrder(at<std::uint16_t>(offsetof(Elf64_Ehdr, e_machine)));
    ident = identityOf(bytes.data(), machine);
}

bool ElfFile::isReadable() const {
    return ident.fileClass == ELFCLASS64 && ident.byteOrder == kOwnByteOrder;
}

std::vector<Elf64_Phdr> ElfFile::segmentTable() const {
    const auto header = at<Elf64_Ehdr>(0);
    if (header.e_phnum != 0 && header.e_phentsize != sizeof(Elf64_Phdr)) {
        throw OdError(OdString(L"program headers of an unknown kind"));
    }
    return table<Elf64_Phdr>(header.e_phoff, header.e_phnum);
}

bool ElfFile::isCut() const {
    const auto all = segmentTable();
    return std::any_of(all.begin(), all.end(), [this](const Elf64_Phdr& segment) {
        return segment.p_type == PT_LOAD && !holds(segment.p_offset, segment.p_filesz);
    });
}

std::vector<Elf64_Phdr> ElfFile::segments() const {
    auto found = segmentTable();
    for (const Elf64_Phdr& segment : found) {
        checkRange(segment.p_offset, segment.p_filesz);
    }
    return found;
}

std::vector<Elf64_Shdr> ElfFile::sections() const {
    const auto header = at<Elf64_Ehdr>(0);
    const std::uint64_t length = std::uint64_t{header.e_shnum} * sizeof(Elf64_Shdr);
    if (header.e_shentsize != sizeof(Elf64_Shdr) || !holds(header.e_shoff, length)) {
        return {};
    }
    return table<Elf64_Shdr>(header.e_shoff, header.e_shnum);
}

bool ElfFile::holds(std::uint64_t offset, std::uint64_t length) const {
    return offset <= fileSize && length <= fileSize - offset;
}

void ElfFile::checkRange(std::uint64_t offset, std::uint64_t length) const {
    if (!holds(offset, length)) {
        throw OdError(OdString(L"the file is too short for what it names"));
    }
}

void ElfFile::checkTable(std::uint64_t offset, std::uint64_t count, std::size_t size) const {
    if (count > kLargestTable / size) {
        throw OdError(OdString(L"a table of the file is too large"));
    }
    checkRange(offset, count * size);
}

void ElfFile::read(std::uint64_t offset, void* target, std::size_t length) const {
    checkRange(offset, length);
    if (offset <= headLength && length <= headLength - offset) {
        std::copy_n(head.data() + offset, length, static_cast<char*>(target));
    } else {
        readFromDisk(offset, static_cast<char*>(target), length);
    }
}

void ElfFile::readFromDisk(std::uint64_t offset, char* target, std::size_t length) const {
    while (length > 0) {
        const ssize_t got = pread(file, target, length, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            failWithSystemError();
        }
        // Somebody has cut the file since it was opened.
        if (got == 0) {
            checkRange(fileSize, 1);
        }
        target += got;
        offset += static_cast<std::uint64_t>(got);
        length -= static_cast<std::size_t>(got);
    }
}
