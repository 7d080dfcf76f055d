// Files by wildcard pattern. A folder is read in one pass; the order of the answers is made
// afterwards, since that of the file system is no order.
#include <algorithm>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "casefold.h"
#include "folderreader.h"
#include "pathtext.h"
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

/// A name with what it is sorted by.
struct SortedName {
    SortedName(std::string_view text, std::string_view folded, bool comesFirst)
        : name(text), foldedStem(stemOf(folded)), isFirst(comesFirst) {}

    friend bool operator<(const SortedName& a, const SortedName& b) {
        if (a.isFirst != b.isFirst) {
            return a.isFirst;
        }
        const int order = a.foldedStem.compare(b.foldedStem);
        return order != 0 ? order < 0 : a.tieBreaker() < b.tieBreaker();
    }
    std::tuple<std::string_view, std::string, std::string_view> tieBreaker() const {
        const std::string_view stem = stemOf(name);
        const std::string_view extension = std::string_view(name).substr(stem.size());
        return {stem, foldCase(extension), extension};
    }

    std::string name;
    std::string foldedStem;
    bool isFirst;
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
    void addFiles(const std::string& path, std::vector<SortedName>& files);
    void addFolders(const Folder& parent, std::vector<SortedName>& folders);

    Pattern pattern;
    std::size_t levelCount;
    OdArray<OdAnsiString>& result;
    std::vector<Folder> pending;
    FolderChain chain;
    std::string foldedName;  // kept, so that names need no block each
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
    if (!reader.isOpen() || !chain.enter(folder.level, reader.id())) {
        return;
    }
    const bool goesDeeper = folder.level + 1 < levelCount;
    std::vector<SortedName> files;
    std::vector<SortedName> folders;
    while (reader.next()) {
        foldCase(reader.name(), foldedName);
        const bool matches = pattern.matches(foldedName);
        const EntryKind kind = matches || goesDeeper ? reader.kind() : EntryKind::kNothing;
        if (matches && kind == EntryKind::kFile) {
            files.emplace_back(reader.name(), foldedName, pattern.isExactly(reader.name()));
        } else if (goesDeeper && kind == EntryKind::kFolder) {
            folders.emplace_back(reader.name(), foldedName, false);
        }
    }
    addFiles(folder.path, files);
    addFolders(folder, folders);
}

void Glob::addFiles(const std::string& path, std::vector<SortedName>& files) {
    std::sort(files.begin(), files.end());
    std::string answer = joinPath(path, "");
    const std::size_t folderLength = answer.size();
    for (const SortedName& file : files) {
        answer.replace(folderLength, answer.npos, file.name);
        result.append(OdAnsiString(answer));
    }
}

void Glob::addFolders(const Folder& parent, std::vector<SortedName>& folders) {
    // The last one put there is the first one searched.
    std::sort(folders.rbegin(), folders.rend());
    for (const SortedName& folder : folders) {
        pending.push_back({joinPath(parent.path, folder.name), parent.level + 1});
    }
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
