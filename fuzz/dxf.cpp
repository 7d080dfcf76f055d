// ASCII DXF drawings.
#include <algorithm>
#include <cstring>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <drawing/runtime.h>

#include "dxfdrawing.h"
#include "dxfgroups.h"
#include "fontresolution.h"
#include "property.h"
#include "text.h"

namespace {

using vemoapp::DxfDrawing;

struct Reading {
    std::optional<DxfDrawing> drawing;
    std::string error;
};

Reading read(const std::string& text) {
    std::istringstream stream(text);
    try {
        return {vemoapp::readDxfDrawing(stream), {}};
    } catch (const OdError& error) {
        requireProperty(error.code() == eExtendedError, "a damaged drawing has one kind of error");
        return {std::nullopt, OdStringToUtf8String(error.description()).str()};
    }
}

bool isUtf8(const std::string& text) {
    return OdStringToUtf8String(OdUtf8StringToOdString(text)).view() == text;
}

// Everything that is known of a drawing, as one text.
std::string textOf(const DxfDrawing& drawing) {
    std::ostringstream text;
    text << drawing.version << '|' << drawing.codePage << '|' << drawing.units.value_or(-1) << '|'
         << drawing.metric;
    for (const auto& layer : drawing.layers) {
        text << '|' << layer.name << ' ' << layer.colour << ' ' << layer.flags << ' '
             << layer.entities;
    }
    for (const auto& style : drawing.styles) {
        text << '|' << style.name << ' ' << style.fontFile << ' ' << style.bigFontFile << ' '
             << style.typeface << ' ' << style.faceFlags << style.namesShapeFile;
    }
    for (const std::string& block : drawing.blocks) {
        text << '|' << block;
    }
    for (const auto& [type, count] : drawing.entityCounts) {
        text << '|' << type << ' ' << count;
    }
    return text.str();
}

bool same(const Reading& a, const Reading& b) {
    return a.error == b.error && a.drawing.has_value() == b.drawing.has_value() &&
           (!a.drawing || textOf(*a.drawing) == textOf(*b.drawing));
}

void checkDrawing(const DxfDrawing& drawing) {
    requireProperty(isUtf8(textOf(drawing)), "all texts are UTF-8");
    std::set<std::string> names;
    std::uint64_t entities = 0;
    for (const auto& layer : drawing.layers) {
        requireProperty(names.insert(vemoapp::upperCase(layer.name)).second,
                        "a layer's name is there once, whatever its case");
        entities += layer.entities;
    }
    requireProperty(entities == drawing.entityTotal(), "each entity is on one layer");
    for (const auto& style : drawing.styles) {
        const auto fonts = vemoapp::fontsOf(style);
        requireProperty(fonts.size() <= 2, "a style has two fonts at most");
        for (const auto& font : fonts) {
            requireProperty(!font.file.empty() || !font.typeface.empty(), "a font is named");
        }
    }
    for (const std::string& line : vemoapp::describeDrawing(drawing)) {
        requireProperty(isUtf8(line), "the report is UTF-8");
    }
}

// Where an error is; the line behind the last one tells that the file ends there.
std::uint64_t lineOf(const std::string& error) {
    requireProperty(error.starts_with("line "), "an error has its line");
    return std::stoull(error.substr(std::strlen("line ")));
}

// Line ends of the other kind, and a remark in front, change nothing but the line of an error.
void checkForms(const std::string& text, const Reading& reading) {
    // A line may be too long with one byte more.
    if (text.find('\r') == std::string::npos && text.size() < vemoapp::DxfGroupReader::kMaxLine) {
        std::string other;
        for (const char letter : text) {
            other += letter == '\n' ? std::string("\r\n") : std::string(1, letter);
        }
        requireProperty(same(read(other), reading), "line ends make no difference");
    }
    if (!text.starts_with("\xEF\xBB\xBF")) {
        const Reading behind = read("999\nremark\n" + text);
        if (reading.drawing) {
            requireProperty(same(behind, reading), "remarks make no difference");
        } else {
            requireProperty(!behind.drawing && lineOf(behind.error) == lineOf(reading.error) + 2,
                            "an error moves with its line");
        }
    }
    if (reading.drawing) {
        requireProperty(same(read(text + "\n999999\n"), reading),
                        "nothing is read behind the end mark");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const Reading reading = read(text);
    if (reading.drawing) {
        checkDrawing(*reading.drawing);
    } else {
        const auto lines = static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
        requireProperty(lineOf(reading.error) <= lines + 1, "an error is within the file");
    }
    checkForms(text, reading);
    return 0;
}
