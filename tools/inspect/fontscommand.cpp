// vemo-inspect fonts
#include <algorithm>
#include <filesystem>
#include <iostream>

#include "arguments.h"
#include "inspectruntime.h"
#include "jsontext.h"
#include "subcommands.h"
#include "voapfontsread.h"

namespace inspect {

namespace {

namespace fs = std::filesystem;

/// What the readers made of one file.
struct FontFile {
    std::string path;
    bool isCompiled = false;
    vosi::ShxKind shxKind = vosi::kShxUnknown;
    std::string error;  // of a compiled font that couldn't be read
    bool ok = false;
    std::vector<vosi::TtfFaceRecord> faces;
};

std::string lowerExtension(const fs::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return c < 0x80 ? std::tolower(c) : c; });
    return extension;
}

bool isCompiledFont(const fs::path& path) {
    const std::string extension = lowerExtension(path);
    return extension == ".shx" || extension == ".shp";
}

bool isFont(const fs::path& path) {
    const std::string extension = lowerExtension(path);
    return isCompiledFont(path) || extension == ".ttf" || extension == ".ttc";
}

// Files as they are named, and the fonts below folders by path.
std::vector<std::string> filesOf(const std::vector<std::string>& operands) {
    std::vector<std::string> files;
    for (const std::string& operand : operands) {
        if (!fs::is_directory(operand)) {
            files.push_back(operand);
            continue;
        }
        std::vector<std::string> below;
        for (const auto& entry : fs::recursive_directory_iterator(
                 operand, fs::directory_options::skip_permission_denied)) {
            if (entry.is_regular_file() && isFont(entry.path())) {
                below.push_back(entry.path().string());
            }
        }
        std::sort(below.begin(), below.end());
        files.insert(files.end(), below.begin(), below.end());
    }
    return files;
}

FontFile readFont(const std::string& path) {
    FontFile font;
    font.path = path;
    font.isCompiled = isCompiledFont(path);
    const OdString name = OdUtf8StringToOdString(OdAnsiString(path));
    if (!font.isCompiled) {
        font.ok = vosi::readTtfDescriptors(name, font.faces);
        return font;
    }
    try {
        font.shxKind = vosi::readShxKind(*odrxSystemServices()->createFile(name));
        font.ok = true;
    } catch (const OdError& error) {
        font.error = OdStringToUtf8String(error.description()).str();
    }
    return font;
}

// ---- JSON ----

std::string jsonOf(const vosi::TtfFaceRecord& face) {
    JsonObject names;
    for (const auto& [language, name] : face.localNames) {
        names.add(std::to_string(language), jsonText(name));
    }
    return JsonObject()
        .add("typeface", jsonText(face.typeface))
        .add("bold", inspect::jsonOf(face.isBold()))
        .add("italic", inspect::jsonOf(face.isItalic()))
        .add("names", names.json())
        .json();
}

std::string jsonOf(const FontFile& font) {
    JsonObject object;
    object.add("path", jsonText(font.path));
    if (!font.error.empty()) {
        return object.add("error", jsonText(font.error)).json();
    }
    if (font.isCompiled) {
        return object.add("shxKind", std::to_string(font.shxKind)).json();
    }
    JsonArray faces;
    for (const vosi::TtfFaceRecord& face : font.faces) {
        faces.add(jsonOf(face));
    }
    return object.add("ok", inspect::jsonOf(font.ok)).add("faces", faces.json()).json();
}

// ---- text ----

const char* describe(vosi::ShxKind kind) {
    switch (kind) {
        case vosi::kShxBigFont:
            return "a big font";
        case vosi::kShxUnifont:
            return "a main font (unifont 1.0)";
        case vosi::kShxShapes11:
            return "shapes 1.1, in no index";
        case vosi::kShxVersion10:
            return "shapes of version 1.0, in no index";
        case vosi::kShxVersion11:
            return "shapes of version 1.1, in no index";
        default:
            return "of no kind that is known, in no index";
    }
}

void print(const vosi::TtfFaceRecord& face) {
    std::cout << "    " << OdStringToUtf8String(face.typeface).str()
              << (face.typeface.isEmpty() ? "(no typeface)" : "") << (face.isBold() ? ", bold" : "")
              << (face.isItalic() ? ", italic" : "") << '\n';
    for (const auto& [language, name] : face.localNames) {
        std::cout << "        " << language << ' ' << OdStringToUtf8String(name).str() << '\n';
    }
}

void print(const FontFile& font) {
    std::cout << font.path << ": ";
    if (!font.error.empty()) {
        std::cout << font.error << '\n';
    } else if (font.isCompiled) {
        std::cout << describe(font.shxKind) << '\n';
    } else if (font.faces.empty()) {
        std::cout << "no face with a family name, in no index\n";
    } else {
        std::cout << font.faces.size() << (font.faces.size() == 1 ? " face" : " faces")
                  << (font.ok ? "" : "; then it can't be read, so it is in no index") << '\n';
        for (const vosi::TtfFaceRecord& face : font.faces) {
            print(face);
        }
    }
}

}  // namespace

int inspectFonts(const std::vector<std::string>& words) {
    const Arguments arguments(words, {.flags = {"--json"}, .values = {}});
    if (arguments.operands().empty() || !arguments.behindDashes().empty()) {
        throw UsageError("fonts needs files or folders.");
    }
    const InspectRuntime runtime;
    int status = 0;
    for (const std::string& operand : arguments.operands()) {
        if (!fs::exists(operand)) {
            std::cerr << "vemo-inspect: " << operand << " isn't there.\n";
            status = EXIT_FAILURE;
        }
    }
    JsonArray answer;
    for (const std::string& file : filesOf(arguments.operands())) {
        const FontFile font = readFont(file);
        if (arguments.has("--json")) {
            answer.add(jsonOf(font));
        } else {
            print(font);
        }
    }
    if (arguments.has("--json")) {
        std::cout << answer.json() << '\n';
    }
    return status;
}

}  // namespace inspect
