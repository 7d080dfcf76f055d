#include "fontresolution.h"

#include <algorithm>

#include <utils/paths.h>

#include "text.h"

namespace vemoapp {

namespace {

using Host = OdDbBaseHostAppServices;

struct TypeName {
    OdFontType type;
    const char* plural;
    const char* singular;  // what goes before the font's name
};

constexpr TypeName kTypeNames[] = {{kFontTypeShx, "SHX fonts", ""},
                                   {kFontTypeTrueType, "TrueType fonts", ""},
                                   {kFontTypeShape, "shape files", "shape file "},
                                   {kFontTypeBig, "big fonts", "big font "}};

const TypeName& nameOf(OdFontType type) {
    return *std::find_if(std::begin(kTypeNames), std::end(kTypeNames),
                         [type](const TypeName& name) { return name.type == type; });
}

std::string utf8(const OdString& text) {
    return OdStringToUtf8String(text).str();
}

bool isTrueTypeFile(const std::string& name) {
    const std::string upper = upperCase(name);
    return upper.ends_with(".TTF") || upper.ends_with(".TTC") || upper.ends_with(".OTF");
}

// Drawings leave the extension of compiled fonts out.
std::string withExtension(const std::string& name, OdFontType type) {
    const bool bare = voutGetFileNoExtName(name) == voutGetLastFileNameInPath(name);
    return type != kFontTypeTrueType && bare && !name.empty() ? name + ".shx" : name;
}

FontRequest compiledFont(const std::string& file, OdFontType type) {
    return {.type = type, .file = withExtension(file, type), .typeface = {}};
}

std::string shownName(const FontRequest& request) {
    if (request.typeface.empty()) {
        return nameOf(request.type).singular + request.file;
    }
    std::string face = request.typeface;
    face += (request.style & OdTtfDescriptor::kBold) != 0 ? " bold" : "";
    face += (request.style & OdTtfDescriptor::kItalic) != 0 ? " italic" : "";
    return face;
}

std::string shownName(const DxfTextStyle& style) {
    return style.namesShapeFile && style.name.empty() ? "shapes" : style.name;
}

}  // namespace

std::vector<FontRequest> fontsOf(const DxfTextStyle& style) {
    const std::string file(trimmed(style.fontFile));
    const std::string bigFont(trimmed(style.bigFontFile));
    std::vector<FontRequest> fonts;
    if (style.namesShapeFile) {
        if (!file.empty()) {
            fonts.push_back(compiledFont(file, kFontTypeShape));
        }
        return fonts;
    }
    if (!style.typeface.empty() || isTrueTypeFile(file)) {
        fonts.push_back({kFontTypeTrueType, file, style.typeface,
                         style.faceFlags & (OdTtfDescriptor::kBold | OdTtfDescriptor::kItalic)});
        return fonts;
    }
    if (!file.empty()) {
        fonts.push_back(compiledFont(file, kFontTypeShx));
    }
    if (!bigFont.empty()) {
        fonts.push_back(compiledFont(bigFont, kFontTypeBig));
    }
    return fonts;
}

std::vector<std::string> FontResolution::describe(const std::vector<DxfTextStyle>& styles,
                                                  std::size_t limit) {
    std::vector<std::string> lines;
    std::vector<std::string> complete;
    for (const DxfTextStyle& style : styles) {
        std::vector<std::string> fonts;
        bool missing = false;
        for (const FontRequest& request : fontsOf(style)) {
            const Answer& answer = answerTo(request);
            fonts.push_back(answer.text);
            missing = missing || answer.missing;
        }
        const std::string text = fonts.empty() ? "no font" : joined(fonts, "; ", fonts.size());
        (missing ? lines : complete).push_back(shownName(style) + ": " + text);
    }
    const std::size_t missingCount = lines.size();
    lines.insert(lines.end(), complete.begin(), complete.end());
    if (lines.size() > limit) {
        std::string rest = "and " + std::to_string(lines.size() - limit) + " more";
        if (missingCount > limit) {
            rest += ", " + std::to_string(missingCount - limit) + " of which miss a font";
        }
        lines.resize(limit);
        lines.push_back(rest);
    }
    return lines;
}

const FontResolution::Answer& FontResolution::answerTo(const FontRequest& request) {
    auto known = answers.find(request);
    if (known == answers.end()) {
        known = answers.emplace(request, resolved(request)).first;
    }
    return known->second;
}

FontResolution::Answer FontResolution::resolved(const FontRequest& request) {
    const std::string name = shownName(request);
    if (const OdString file = fileOfFace(request); !file.isEmpty()) {
        return {name + " is " + utf8(file), false};
    }
    const bool trueType = request.type == kFontTypeTrueType;
    const OdString file =
        lookUp(request.file, trueType ? Host::kTrueTypeFontFile : Host::kCompiledShapeFile);
    if (!file.isEmpty()) {
        const char* road = request.typeface.empty() ? "" : ", found by the file's name";
        return {name + " is " + utf8(file) + road, false};
    }
    return {name + " is missing, " + substituteFor(request), true};
}

std::string FontResolution::substituteFor(const FontRequest& request) {
    const std::string& wanted = request.file.empty() ? request.typeface : request.file;
    const std::string substitute =
        utf8(host.getSubstituteFont(OdUtf8StringToOdString(wanted), request.type));
    if (substitute.empty()) {
        return "and there is no substitute";
    }
    const std::string why = std::string(" (configured for ") + nameOf(request.type).plural + ")";
    const OdString file = lookUp(withExtension(substitute, request.type), Host::kFontFile);
    return file.isEmpty() ? "and its substitute " + substitute + why + " is missing too"
                          : utf8(file) + " serves instead" + why;
}

OdString FontResolution::fileOfFace(const FontRequest& request) {
    OdTtfDescriptor face;
    face.typeface = OdUtf8StringToOdString(request.typeface);
    face.flags = request.style;
    OdString file;
    const bool found = !face.typeface.isEmpty() && host.ttfFileNameByDescriptor(face, file);
    return found ? file : OdString();
}

// The fonts' index knows bare names alone, and a drawing may carry the path of another machine.
OdString FontResolution::lookUp(const std::string& name, Host::FindFileHint hint) {
    auto known = files.find({name, hint});
    if (known == files.end()) {
        const OdString path = OdUtf8StringToOdString(name);
        const OdString bareName = voutGetLastFileNameInPathW(path);
        OdString found = host.findFile(path, database, hint);
        if (found.isEmpty() && !(bareName == path)) {
            found = host.findFile(bareName, database, hint);
        }
        known = files.emplace(std::pair(name, hint), found).first;
    }
    return known->second;
}

}  // namespace vemoapp
