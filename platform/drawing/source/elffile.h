// An ELF file, read piece by piece. Its bytes come from anywhere: every offset is held against the
// file's size and every count against a limit, and what doesn't fit raises an OdError whose
// description is the words for it.
#pragma once

#include <elf.h>

#include <array>
#include <cstdint>
#include <vector>

#include "drawing/oderror.h"

/// What a file is for. Two files with the same identity suit the same process.
struct ElfIdentity {
    std::uint8_t fileClass = 0;
    std::uint8_t byteOrder = 0;
    std::uint16_t machine = 0;

    friend bool operator==(const ElfIdentity&, const ElfIdentity&) = default;
};

/// The identity of the running code.
ElfIdentity ownElfIdentity();

class ElfFile {
  public:
    /// Opens the file and reads its header. Raises when it can't be read or is no ELF file.
    explicit ElfFile(const OdString& path);
    ElfFile(const ElfFile&) = delete;
    ElfFile& operator=(const ElfFile&) = delete;
    ~ElfFile();

    const ElfIdentity& identity() const { return ident; }
    std::uint16_t type() const { return fileType; }
    /// Whether the rest of the file can be read here: 64 bits, in this machine's byte order.
    bool isReadable() const;

    /// Whether the file ends before all that is to be loaded of it. The system's loader maps such a
    /// file all the same, and the process ends when it touches what isn't there.
    bool isCut() const;
    /// The program headers. Raises when the file ends before the segments that they name.
    std::vector<Elf64_Phdr> segments() const;
    /// The section headers; none when the file has none that can be read.
    std::vector<Elf64_Shdr> sections() const;

    /// The value at an offset in the file.
    template <class T>
    T at(std::uint64_t offset) const {
        T value;
        read(offset, &value, sizeof value);
        return value;
    }

    /// So many values from an offset on, at most 32 megabytes.
    template <class T>
    std::vector<T> table(std::uint64_t offset, std::uint64_t count) const {
        checkTable(offset, count, sizeof(T));
        std::vector<T> values(static_cast<std::size_t>(count));
        read(offset, values.data(), values.size() * sizeof(T));
        return values;
    }

  private:
    std::vector<Elf64_Phdr> segmentTable() const;
    bool holds(std::uint64_t offset, std::uint64_t length) const;
    void checkRange(std::uint64_t offset, std::uint64_t length) const;
    void checkTable(std::uint64_t offset, std::uint64_t count, std::size_t size) const;
    void read(std::uint64_t offset, void* target, std::size_t length) const;
    void readFromDisk(std::uint64_t offset, char* target, std::size_t length) const;
    void readHeader();

    int file = -1;
    std::uint64_t fileSize = 0;
    // The file's beginning, which has all that a module is asked for before it is loaded.
    std::array<char, 1024> head{};
    std::size_t headLength = 0;
    ElfIdentity ident;
    std::uint16_t fileType = ET_NONE;
};
