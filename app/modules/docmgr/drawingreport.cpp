// The summary of a drawing that is shown when it is opened: one line a topic, none without end.
#include <algorithm>

#include "dxfdrawing.h"
#include "text.h"

namespace vemoapp {

namespace {

constexpr std::uint32_t kBold = 0x02000000;
constexpr std::uint32_t kItalic = 0x01000000;

// Names of the INSUNITS codes, in their order.
constexpr const char* kUnitNames[] = {"unitless",
                                      "inches",
                                      "feet",
                                      "miles",
                                      "millimetres",
                                      "centimetres",
                                      "metres",
                                      "kilometres",
                                      "microinches",
                                      "mils",
                                      "yards",
                                      "angstroms",
                                      "nanometres",
                                      "microns",
                                      "decimetres",
                                      "decametres",
                                      "hectometres",
                                      "gigametres",
                                      "astronomical units",
                                      "light years",
                                      "parsecs"};

std::string unitsName(const std::optional<int>& units) {
    if (!units) {
        return "not stated";
    }
    bool known = *units >= 0 && *units < static_cast<int>(std::size(kUnitNames));
    return known ? kUnitNames[*units] : "code " + std::to_string(*units);
}

std::string headerLine(const DxfDrawing& drawing) {
    std::string line = drawing.version.empty() ? "not stated" : drawing.version;
    line += ", units " + unitsName(drawing.units);
    if (!drawing.codePage.empty()) {
        line += ", code page " + drawing.codePage;
    }
    return line;
}

// "3: a, b, c"
std::string counted(std::uint64_t count, const std::vector<std::string>& items,
                    std::string_view separator) {
    return items.empty() ? "none"
                         : std::to_string(count) + ": " + joined(items, separator, kShownItems);
}

std::string layersLine(const DxfDrawing& drawing) {
    std::vector<std::string> items;
    for (const DxfLayer& layer : drawing.layers) {
        items.push_back(layer.name + " (" + std::to_string(layer.entities) + ")");
    }
    return counted(items.size(), items, ", ");
}

std::string entitiesLine(const DxfDrawing& drawing) {
    using Count = std::pair<std::string, std::uint64_t>;
    std::vector<Count> counts(drawing.entityCounts.begin(), drawing.entityCounts.end());
    std::stable_sort(counts.begin(), counts.end(),
                     [](const Count& a, const Count& b) { return a.second > b.second; });
    std::vector<std::string> items;
    items.reserve(counts.size());
    for (const auto& [type, count] : counts) {
        items.push_back(type + " " + std::to_string(count));
    }
    return counted(drawing.entityTotal(), items, ", ");
}

std::string fontOf(const DxfTextStyle& style) {
    if (!style.typeface.empty()) {
        std::string face = style.typeface;
        face += (style.faceFlags & kBold) != 0 ? " bold" : "";
        face += (style.faceFlags & kItalic) != 0 ? " italic" : "";
        return face + " (TrueType" + (style.fontFile.empty() ? "" : ", " + style.fontFile) + ")";
    }
    std::string font = style.fontFile.empty() ? "no font" : style.fontFile;
    return style.bigFontFile.empty() ? font : font + " with big font " + style.bigFontFile;
}

std::string stylesLine(const DxfDrawing& drawing) {
    std::vector<std::string> items;
    for (const DxfTextStyle& style : drawing.styles) {
        items.push_back((style.namesShapeFile ? "shapes" : style.name) + ": " + fontOf(style));
    }
    return counted(items.size(), items, "; ");
}

}  // namespace

std::vector<std::string> describeDrawing(const DxfDrawing& drawing) {
    std::vector<std::string> lines = {
        "  version   " + headerLine(drawing), "  layers    " + layersLine(drawing),
        "  entities  " + entitiesLine(drawing), "  styles    " + stylesLine(drawing)};
    if (!drawing.blocks.empty()) {
        lines.push_back("  blocks    " + counted(drawing.blocks.size(), drawing.blocks, ", "));
    }
    return lines;
}

}  // namespace vemoapp
