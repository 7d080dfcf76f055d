#include "findcommand.h"

#include <filesystem>

#include <app/services.h>
#include <core/vomoduleservices.h>
#include <utils/paths.h>

#include "findfile.h"
#include "foundplace.h"
#include "say.h"
#include "text.h"

namespace vemoapp {

namespace {

using Host = OdDbBaseHostAppServices;

struct NamedHint {
    const char* name;
    Host::FindFileHint value;
    const char* list;  // the folders in which such files are looked for; null for fonts
};

constexpr NamedHint kHints[] = {{"DEFAULT", Host::kDefault, "supportPaths"},
                                {"FONT", Host::kFontFile, nullptr},
                                {"SHX", Host::kCompiledShapeFile, nullptr},
                                {"TTF", Host::kTrueTypeFontFile, nullptr},
                                {"IMAGE", Host::kEmbeddedImageFile, "EmbeddedImagePath"},
                                {"XREF", Host::kXRefDrawing, "xRefPaths"},
                                {"PATTERN", Host::kPatternFile, "pattenPaths"},
                                {"FONTMAP", Host::kFontMapFile, "fontmapFile"},
                                {"TEXTURE", Host::kTextureMapFile, "texturePaths"}};

std::vector<std::string> hintNames() {
    std::vector<std::string> names;
    for (const NamedHint& hint : kHints) {
        names.emplace_back(hint.name);
    }
    return names;
}

const NamedHint* hintNamed(const std::string& name) {
    for (const NamedHint& hint : kHints) {
        if (upperCase(name) == hint.name) {
            return &hint;
        }
    }
    return nullptr;
}

OdSmartPtr<vosi::VosiDocument> activeDocument() {
    auto manager = service<vosi::VosiDocMgrSvr>(vosi::kDocMgrKey);
    return manager ? manager->activeDocument() : nullptr;
}

SearchPlaces placesFor(const NamedHint& hint, vosi::VosiDocument* document) {
    SearchPlaces places;
    if (document) {
        places.drawingFolder = OdStringToUtf8String(document->documentFolder()).str();
    }
    std::error_code failure;
    places.workingFolder = std::filesystem::current_path(failure).string();
    places.fontIndex = !hint.list;
    if (hint.list) {
        places.listName = hint.list;
        OdArray<OdAnsiString> folders;
        voutEnumPaths(vo_runtime_config(OdAnsiString("paths/") + hint.list), folders);
        for (const OdAnsiString& folder : std::as_const(folders)) {
            places.folders.push_back(folder.str());
        }
    }
    return places;
}

void findCommand(const Command::Arguments& arguments) {
    const NamedHint* hint = arguments.size() > 1 ? hintNamed(arguments[1]) : &kHints[0];
    if (arguments.empty() || !hint) {
        say("FIND name [hint]; hints are " + joined(hintNames(), ", ", std::size(kHints)) + ".");
        return;
    }
    const std::string& name = arguments[0];
    const auto document = activeDocument();
    const auto database = document ? document->documentDatabase() : nullptr;
    const OdString found = findFile(OdUtf8StringToOdString(name), hint->value, database.get());
    if (found.isEmpty()) {
        say(name + " is not found.");
        return;
    }
    const std::string path = OdStringToUtf8String(found).str();
    say(path + " (" + placeOf(name, path, placesFor(*hint, document.get())) + ")");
}

}  // namespace

void addFindCommand(CommandTable& table) {
    table.add(
        {"FIND", "name [hint]", "shows where a file is found, and by which road", findCommand});
}

}  // namespace vemoapp
