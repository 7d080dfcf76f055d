// What the application knows of a drawing: its header, layers, text styles and how much is in it.
#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vemoapp {

/// A layer, from the table or from an entity that names it.
struct DxfLayer {
    std::string name;
    int colour = 7;  // negative while the layer is off
    int flags = 0;   // bit 0 frozen, bit 2 locked
    std::uint64_t entities = 0;
};

struct DxfTextStyle {
    std::string name;
    std::string fontFile;
    std::string bigFontFile;
    std::string typeface;         // of a TrueType font, empty for a compiled one
    std::uint32_t faceFlags = 0;  // bold and italic as in OdTtfDescriptor
    bool namesShapeFile = false;
};

/// A drawing's content as counted by its reader. All texts are UTF-8.
struct DxfDrawing {
    std::string version;       // "AC1015"; empty when the drawing doesn't say
    std::string codePage;      // "ANSI_936"
    std::optional<int> units;  // the INSUNITS code, when the drawing states it
    bool metric = true;
    std::vector<DxfLayer> layers;  // the table's first, in its order
    std::vector<DxfTextStyle> styles;
    std::vector<std::string> blocks;  // those that have a name of their own
    // Entities of the drawing itself, those in blocks apart; a polyline counts once.
    std::map<std::string, std::uint64_t> entityCounts;

    std::uint64_t entityTotal() const;
};

/// Reads an ASCII DXF drawing to its end mark. Raises OdError (eExtendedError) with the line for
/// what is no drawing, is damaged or ends too early.
DxfDrawing readDxfDrawing(std::istream& stream);

/// Reads the drawing in the file at the UTF-8 path. Raises OdError_FileException when it can't be
/// opened or read, else as above.
DxfDrawing readDxfFile(const std::string& path);

/// What a report shows of one topic; the rest is counted.
inline constexpr std::size_t kShownItems = 12;

/// The drawing in a few lines for people.
std::vector<std::string> describeDrawing(const DxfDrawing& drawing);

}  // namespace vemoapp
