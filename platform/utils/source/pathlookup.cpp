// Looking for a path without regard to case, one component after the other, depth first: at each
// the name as it stands, and only when that leads nowhere the names that differ in case.
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "casefold.h"
#include "folderreader.h"
#include "pathtext.h"
#include "utils/paths.h"

namespace {

using Components = std::vector<std::string>;

/// The components between separators, empty ones left out. A closing separator asks for a folder,
/// and so does a closing ".".
Components split(std::string_view path, const char* separators) {
    Components components;
    const bool asksForFolder = !path.empty() && path.find_last_of(separators) == path.size() - 1;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of(separators), path.size());
        if (end > 0) {
            components.emplace_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    if (asksForFolder) {
        components.emplace_back(".");
    }
    return components;
}

bool isLink(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

class Lookup {
  public:
    enum Case { kExact, kIgnored };

    Lookup(Components wanted, Case comparison)
        : components(std::move(wanted)), letterCase(comparison) {}

    /// The path as it stands on disk, from the folder on; "" is the root folder.
    std::optional<std::string> findFrom(const std::string& folder);

  private:
    // A path that stands on disk, and the component that is to follow. `others` once the name as it
    // stands was tried there.
    struct Place {
        std::string path;
        std::size_t component;
        bool others;
    };

    void stepByDots(const Place& place);
    void stepExactly(const Place& place);
    void stepToOthers(const Place& place);

    Components components;
    Case letterCase;
    std::vector<Place> open;
    // With ".." the same place can be reached in many ways; each is searched once.
    std::set<std::pair<std::string, std::size_t>> seen;
};

std::optional<std::string> Lookup::findFrom(const std::string& folder) {
    open.push_back({folder, 0, false});
    while (!open.empty()) {
        const Place place = std::move(open.back());
        open.pop_back();
        if (place.component == components.size()) {
            return place.path.empty() ? "/" : place.path;
        }
        if (place.others) {
            stepToOthers(place);
        } else if (seen.emplace(place.path, place.component).second) {
            const std::string& name = components[place.component];
            name == "." || name == ".." ? stepByDots(place) : stepExactly(place);
        }
    }
    return std::nullopt;
}

// The folder above a link's target isn't the one that holds the link, so ".." behind one stays.
void Lookup::stepByDots(const Place& place) {
    if (kindAt(place.path + '/') != EntryKind::kFolder) {
        return;
    }
    std::string path = place.path;
    if (components[place.component] == ".." && !path.empty()) {
        if (path.ends_with("/..") || isLink(path)) {
            path += "/..";
        } else {
            path.erase(path.rfind('/'));
        }
    }
    open.push_back({std::move(path), place.component + 1, false});
}

void Lookup::stepExactly(const Place& place) {
    if (letterCase == kIgnored) {
        open.push_back({place.path, place.component, true});
    }
    std::string path = place.path + '/' + components[place.component];
    if (kindAt(path) != EntryKind::kNothing) {
        open.push_back({std::move(path), place.component + 1, false});
    }
}

void Lookup::stepToOthers(const Place& place) {
    const std::string& name = components[place.component];
    const std::string wanted = foldCase(name);
    std::string folded;
    std::vector<std::string> fitting;
    FolderReader folder(place.path + '/');
    while (folder.isOpen() && folder.next()) {
        foldCase(folder.name(), folded);
        if (folded == wanted && folder.name() != name && folder.kind() != EntryKind::kNothing) {
            fitting.push_back(place.path + '/' + std::string(folder.name()));
        }
    }
    std::sort(fitting.begin(), fitting.end(), std::greater<>());
    for (std::string& path : fitting) {
        open.push_back({std::move(path), place.component + 1, false});
    }
}

// The same answer for a path that is there as it stands, at the price of one question: the search
// goes along it before anything else. Dots take it to places of their own, but for the one that
// asks for a folder.
std::optional<std::string> findAsItStands(const std::string& folder, const Components& components) {
    const bool asksForFolder = !components.empty() && components.back() == ".";
    const std::size_t count = components.size() - (asksForFolder ? 1 : 0);
    std::string path = folder;
    for (std::size_t index = 0; index < count; ++index) {
        if (components[index] == "." || components[index] == "..") {
            return std::nullopt;
        }
        path += '/';
        path += components[index];
    }
    // The search itself asks no more for a single one.
    if (count < 2) {
        return std::nullopt;
    }
    const EntryKind kind = kindAt(path);
    const bool fits = asksForFolder ? kind == EntryKind::kFolder : kind != EntryKind::kNothing;
    return fits ? std::optional(path) : std::nullopt;
}

std::optional<std::string> findPath(std::string_view path, const char* separators,
                                    Lookup::Case letterCase) {
    std::string start;
    if (path.find_first_of(separators) != 0) {
        start = absolutePath(".");
        if (start.empty()) {
            return std::nullopt;
        }
        start.erase(start.find_last_not_of('/') + 1);
    }
    Components components = split(path, separators);
    if (auto found = findAsItStands(start, components)) {
        return found;
    }
    return Lookup(std::move(components), letterCase).findFrom(start);
}

std::optional<std::string> findPath(std::string_view path) {
    // Nobody could open a longer one, and it bounds the work on a hostile text. The system would
    // end the path at a NUL, and the answer wouldn't.
    if (path.empty() || path.size() >= PATH_MAX || path.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    if (path.find('\\') != std::string_view::npos) {
        // A name may hold a "\" here.
        if (auto found = findPath(path, "/", Lookup::kExact)) {
            return found;
        }
    }
    return findPath(path, "/\\", Lookup::kIgnored);
}

}  // namespace

bool voutIsExistFile(const OdAnsiString& path) {
    const EntryKind kind = kindAt(path.str());
    return kind == EntryKind::kFile || kind == EntryKind::kOther;
}

bool voutIsExistFileNoCaseSensitive(const OdAnsiString& path, OdAnsiString& found) {
    const std::optional<std::string> path8 = findPath(path.view());
    if (path8) {
        found = *path8;
    }
    return path8.has_value();
}

bool voutIsExistFileNoCaseSensitiveW(const OdString& path, OdString& found) {
    OdAnsiString found8;
    const bool exists = voutIsExistFileNoCaseSensitive(OdStringToUtf8String(path), found8);
    if (exists) {
        found = OdUtf8StringToOdString(found8);
    }
    return exists;
}
