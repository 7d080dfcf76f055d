#include "fontfolders.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace {

namespace fs = std::filesystem;

std::string variableOr(const char* name, const std::string& otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? value : otherwise;
}

std::vector<std::string> splitAtColons(std::string_view list) {
    std::vector<std::string> parts;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(':'), list.size());
        parts.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return parts;
}

std::vector<fs::path> candidates() {
    const fs::path home = variableOr("HOME", "");
    std::vector<fs::path> folders;
    folders.push_back(fs::path(variableOr("XDG_DATA_HOME", home / ".local/share")) / "fonts");
    folders.push_back(home / ".fonts");
    for (const std::string& data :
         splitAtColons(variableOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"))) {
        folders.push_back(fs::path(data) / "fonts");
    }
    return folders;
}

bool isInside(const fs::path& inner, const fs::path& outer) {
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first ==
           outer.end();
}

struct Folder {
    fs::path named;
    fs::path resolved;
};

// A relative folder names no place, as the rule for these variables has it.
std::vector<Folder> existing(const std::vector<fs::path>& folders) {
    std::vector<Folder> kept;
    for (const fs::path& folder : folders) {
        std::error_code error;
        const fs::path resolved = fs::canonical(folder, error);
        if (folder.is_absolute() && !error && fs::is_directory(resolved, error)) {
            kept.push_back({folder.lexically_normal(), resolved});
        }
    }
    return kept;
}

bool isCoveredByAnother(const std::vector<Folder>& all, std::size_t index) {
    for (std::size_t other = 0; other < all.size(); ++other) {
        const bool same = all[other].resolved == all[index].resolved;
        if (same ? other < index : isInside(all[index].resolved, all[other].resolved)) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::vector<std::string> systemFontFolders() {
    const std::vector<Folder> all = existing(candidates());
    std::vector<std::string> folders;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!isCoveredByAnother(all, i)) {
            folders.push_back(all[i].named);
        }
    }
    return folders;
}
