// Files by wildcard pattern. A folder is read in one pass; the order of the answers is made
// afterwards, since that of the file system is no order.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "casefold.h"
#include "folderreader.h"
#include "pathtext.h"
#include "sortednames.h"
#include "utils/paths.h"

namespace {

/// "*" stands for any characters, "?" for one. Only the last "*" ever has to take more than it did,
/// so the time is bounded by the product of the two lengths.
bool fits(std::string_view pattern, std::string_view name) {
    std::size_t inPattern = 0;
    std::size_t inName = 0;
    std::size_t star = std::string_view::npos;
    std::size_t taken = 0;
    while (inName < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            taken = inName;
            if (inPattern == pattern.size()) {
                return true;
            }
        } else if (inPattern < pattern.size() && pattern[inPattern] == '?') {
            ++inPattern;
            inName += foldedLength(name[inName]);
        } else if (inPattern < pattern.size() && pattern[inPattern] == name[inName]) {
            ++inPattern;
            ++inName;
        } else if (star != std::string_view::npos) {
            inPattern = star + 1;
            taken += foldedLength(name[taken]);
            inName = taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

class Pattern {
  public:
    explicit Pattern(std::string_view text)
        : wanted(text),
          folded(foldCase(text)),
          hasWildcards(text.find_first_of("*?") != std::string_view::npos) {}

    bool matches(std::string_view foldedName) const {
        return hasWildcards ? fits(folded, foldedName) : folded == foldedName;
    }
    bool isExactly(std::string_view name) const { return !hasWildcards && name == wanted; }

  private:
    std::string_view wanted;
    std::string folded;
    bool hasWildcards;
};

struct Folder {
    std::string path;
    std::size_t level;
};

class Glob {
  public:
    Glob(std::string_view wanted, std::size_t levels, OdArray<OdAnsiString>& answers)
        : pattern(wanted), levelCount(levels), result(answers) {}

    void search(const std::string& top);

  private:
    void searchFolder(const Folder& folder);
    void addFiles(const std::string& path);
    void addFolders(const Folder& parent);

    Pattern pattern;
    std::size_t levelCount;
    OdArray<OdAnsiString>& result;
    std::vector<Folder> pending;
    FolderChain chain;
    // Those of one folder; kept, so that folders need no blocks each.
    std::string foldedName;
    SortedNames files;
    SortedNames folders;
};

void Glob::search(const std::string& top) {
    pending.push_back({top, 0});
    while (!pending.empty()) {
        const Folder folder = std::move(pending.back());
        pending.pop_back();
        searchFolder(folder);
    }
}

void Glob::searchFolder(const Folder& folder) {
    FolderReader reader(folder.path);
    // What is alone can't be led back to.
    const bool isInChain = levelCount > 1;
    if (!reader.isOpen() || (isInChain && !chain.enter(folder.level, reader.id()))) {
        return;
    }
    const bool goesDeeper = folder.level + 1 < levelCount;
    files.clear();
    folders.clear();
    while (reader.next()) {
        foldCase(reader.name(), foldedName);
        const bool matches = pattern.matches(foldedName);
        const EntryKind kind = matches || goesDeeper ? reader.kind() : EntryKind::kNothing;
        if (matches && kind == EntryKind::kFile) {
            files.add(reader.name(), foldedName, pattern.isExactly(reader.name()));
        } else if (goesDeeper && kind == EntryKind::kFolder) {
            folders.add(reader.name(), foldedName);
        }
    }
    addFiles(folder.path);
    addFolders(folder);
}

void Glob::addFiles(const std::string& path) {
    std::string answer = joinPath(path, "");
    const std::size_t folderLength = answer.size();
    files.forEach([&](std::string_view name) {
        answer.replace(folderLength, answer.npos, name);
        result.append(OdAnsiString(answer));
    });
}

void Glob::addFolders(const Folder& parent) {
    const auto before = static_cast<std::ptrdiff_t>(pending.size());
    folders.forEach([&](std::string_view name) {
        pending.push_back({joinPath(parent.path, name), parent.level + 1});
    });
    // The last one there is the first one searched.
    std::reverse(pending.begin() + before, pending.end());
}

}  // namespace

void voutGlobNoCaseSensitive2(const OdAnsiString& folder, const OdAnsiString& pattern,
                              OdArray<OdAnsiString>& result, int depth) {
    if (folder.isEmpty() || depth <= 0) {
        return;
    }
    Glob(pattern.view(), static_cast<std::size_t>(depth), result)
        .search(absolutePath(folder.view()));
}
