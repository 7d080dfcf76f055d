// Files as candidates for the linker.
#include "drawing/rxmodulefile.h"

#include <algorithm>

#include "drawing/rxmodule.h"
#include "elfarchitecture.h"
#include "elfdynamic.h"
#include "moduleplace.h"
#include "moduleversion.h"

namespace {

void describe(const ElfFile& file, OdRxModuleFileInfo& info) {
    info.isElf = true;
    info.architecture = architectureOf(file.identity());
    info.isOwnArchitecture = file.identity() == ownElfIdentity();
    if (!file.isReadable()) {
        return;
    }
    if (file.isCut()) {
        throw OdError(OdString(L"the file is cut short"));
    }
    info.stamp = moduleStampOf(file);
    ElfDynamic(file).describe(info);
    info.definesEntry = std::any_of(
        info.defined.getPtr(), info.defined.getPtr() + info.defined.size(),
        [](const OdRxModuleSymbol& symbol) { return symbol.name == ODRX_MODULE_ENTRY_NAME; });
}

}  // namespace

OdRxModuleFileInfo odReadModuleFile(const OdString& path) {
    OdRxModuleFileInfo info;
    info.placeRefused = placeRefusal(path);
    try {
        describe(ElfFile(path), info);
    } catch (const OdError& error) {
        info.fault = error.description();
    }
    return info;
}
