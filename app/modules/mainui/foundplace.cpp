#include "foundplace.h"

#include <filesystem>

#include <drawing/runtime.h>
#include <utils/paths.h>

namespace vemoapp {

namespace {

namespace fs = std::filesystem;

// Names are looked up without regard to case.
std::string folded(const std::string& text) {
    return OdStringToUtf8String(OdUtf8StringToOdString(text).makeLower()).str();
}

std::string withForwardSlashes(std::string path) {
    for (char& letter : path) {
        letter = letter == '\\' ? '/' : letter;
    }
    return path;
}

std::string folderOf(const std::string& path) {
    return voutGetParentDir(path).str();
}

std::string normal(const fs::path& folder) {
    return (folder / "").lexically_normal().string();
}

// Whether the file stands in the folder itself, or below it where the name's own folders lead.
bool standsIn(const std::string& folder, const std::string& name, const std::string& found) {
    if (folder.empty()) {
        return false;
    }
    const std::string foundFolder = normal(folderOf(found));
    const std::string named = normal(fs::path(folder) / withForwardSlashes(folderOf(name)));
    return foundFolder == normal(folder) || folded(foundFolder) == folded(named);
}

bool isAbsolute(const std::string& name) {
    return name.starts_with('/') || name.starts_with('\\') || name.find(':') != std::string::npos;
}

}  // namespace

std::string placeOf(const std::string& name, const std::string& found, const SearchPlaces& places) {
    if (isAbsolute(name)) {
        const fs::path path = withForwardSlashes(name);
        if (folded(path.lexically_normal().string()) == folded(found)) {
            return "as named";
        }
    } else {
        if (standsIn(places.drawingFolder, name, found)) {
            return "the drawing's folder";
        }
        const fs::path path = places.workingFolder / fs::path(withForwardSlashes(name));
        if (folded(path.lexically_normal().string()) == folded(found)) {
            return "the working folder";
        }
    }
    if (places.fontIndex) {
        return "the font index";
    }
    for (std::size_t index = 0; index < places.folders.size(); ++index) {
        if (standsIn(places.folders[index], name, found)) {
            return "entry " + std::to_string(index + 1) + " of " + places.listName;
        }
    }
    return "in no folder that the lists name";
}

}  // namespace vemoapp
