// What can be told of a module's file without running any of its code.
#pragma once

#include <cstdint>
#include <optional>

#include "drawing/odarray.h"

/// A version of the interfaces between the application and its modules.
struct OdRxInterfaceVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;

    friend bool operator==(const OdRxInterfaceVersion&, const OdRxInterfaceVersion&) = default;
};

/// The version of the running runtime.
DRAWING_EXPORT OdRxInterfaceVersion odInterfaceVersion();

/// Whether a runtime of version `own` takes a module that was built against `built`: one of its own
/// major number and of no newer minor number.
constexpr bool odAcceptsInterfaces(OdRxInterfaceVersion built, OdRxInterfaceVersion own) {
    return built.major == own.major && built.minor <= own.minor;
}

/// "built against interfaces 1.0, and this is 0.1", for a version that isn't accepted.
DRAWING_EXPORT OdString odInterfacesRefused(OdRxInterfaceVersion built, OdRxInterfaceVersion own);

/// A name in a file's dynamic symbol table.
struct OdRxModuleSymbol {
    OdAnsiString name;
    /// The version that goes with the name; empty when none does.
    OdAnsiString version;
    bool isWeak = false;
};

/// A file as a candidate for the linker. What stands behind `isElf` is known of ELF files alone,
/// and what stands behind `isSharedObject` of those of 64 bits in this machine's byte order.
struct OdRxModuleFileInfo {
    /// Why the file can't be read, is no ELF file, or where it contradicts itself; empty when all
    /// is well. What was learnt up to there is kept.
    OdString fault;
    /// Why the linker takes no module from where the file stands; empty for a place that will do.
    OdString placeRefused;

    bool isElf = false;
    /// As `uname -m` has it, for instance "x86_64"; "machine N" for one that has no name here.
    OdAnsiString architecture;
    bool isOwnArchitecture = false;

    /// A library, and not a program.
    bool isSharedObject = false;
    /// The version of the interfaces in the file's stamp; none for a file without one.
    std::optional<OdRxInterfaceVersion> stamp;
    OdAnsiString soName;
    /// The libraries that it needs, in the order in which the system's loader takes them.
    OdArray<OdAnsiString> needed;
    /// Where it wants them looked for, as it stands in the file; empty when it doesn't say.
    OdAnsiString runPath;
    OdAnsiString rPath;
    /// What it wants from others, and what it has for them.
    OdArray<OdRxModuleSymbol> undefined;
    OdArray<OdRxModuleSymbol> defined;
    /// Whether it defines the module entry.
    bool definesEntry = false;
};

/// Reads a file's headers, its dynamic section and its dynamic symbols. Nothing is mapped and
/// nothing runs; no file is too damaged to be passed in. A name without a folder is one in the
/// working folder. May be called on any thread, and while the runtime isn't up.
DRAWING_EXPORT OdRxModuleFileInfo odReadModuleFile(const OdString& path);
