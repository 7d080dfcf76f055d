#include "dxfdrawing.h"

#include <cerrno>
#include <filesystem>
#include <fstream>

#include <drawing/runtime.h>

#include "dxfparser.h"

namespace vemoapp {

std::uint64_t DxfDrawing::entityTotal() const {
    std::uint64_t total = 0;
    for (const auto& [type, count] : entityCounts) {
        total += count;
    }
    return total;
}

DxfDrawing readDxfDrawing(std::istream& stream) {
    return DxfParser(stream).parse();
}

DxfDrawing readDxfFile(const std::string& path) {
    OdString name = OdUtf8StringToOdString(path);
    std::error_code failure;
    // A pipe or a device could keep the application waiting for ever.
    if (!std::filesystem::is_regular_file(path, failure)) {
        throw OdError_FileException(eCantOpenFile, name, failure ? failure.value() : EINVAL);
    }
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw OdError_FileException(eCantOpenFile, name, errno);
    }
    try {
        return readDxfDrawing(stream);
    } catch (const std::ios_base::failure&) {
        throw OdError_FileException(eFileAccessErr, name, EIO);
    }
}

}  // namespace vemoapp
