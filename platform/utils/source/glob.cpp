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
bool fits(std::u32string_view pattern, std::u32string_view name) {
    std::size_t inPattern = 0;
    std::size_t inName = 0;
    std::size_t star = std::u32string_view::npos;
    std::size_t taken = 0;
    while (inName < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == U'*') {
            star = inPattern++;
            taken = inName;
        } else if (inPattern < pattern.size() &&
                   (pattern[inPattern] == U'?' || pattern[inPattern] == name[inName])) {
            ++inPattern;
            ++inName;
        } else if (star != std::u32string_view::npos) {
            inPattern = star + 1;
            inName = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(U'*', inPattern) == std::u32string_view::npos;
}

class Pattern {
  public:
    explicit Pattern(std::string_view text)
        : wanted(text),
          folded(foldCase(text)),
          hasWildcards(text.find_first_of("*?") != std::string_view::npos) {}

    bool matches(std::string_view name) {
        foldCase(name, foldedName);
        return hasWildcards ? fits(folded, foldedName) : folded == foldedName;
    }
    bool isExactly(std::string_view name) const { return !hasWildcards && name == wanted; }

  private:
    std::string_view wanted;
    std::u32string folded;
    bool hasWildcards;
    std::u32string foldedName;  // kept, so that names need no block each
};

/// A name with what it is sorted by.
struct SortedName {
    SortedName(std::string_view text, bool comesFirst)
        : name(text), foldedStem(foldCase(stemOf(text))), isFirst(comesFirst) {}

    friend bool operator<(const SortedName& a, const SortedName& b) {
        const std::string_view stemA = stemOf(a.name);
        const std::string_view stemB = stemOf(b.name);
        const auto keyA = std::tie(b.isFirst, a.foldedStem, stemA);
        const auto keyB = std::tie(a.isFirst, b.foldedStem, stemB);
        return keyA == keyB ? a.extensionKey() < b.extensionKey() : keyA < keyB;
    }
    std::pair<std::u32string, std::string_view> extensionKey() const {
        const std::string_view extension = std::string_view(name).substr(stemOf(name).size());
        return {foldCase(extension), extension};
    }

    std::string name;
    std::u32string foldedStem;
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
        const bool matches = pattern.matches(reader.name());
        const EntryKind kind = matches || goesDeeper ? reader.kind() : EntryKind::kNothing;
        if (matches && kind == EntryKind::kFile) {
            files.emplace_back(reader.name(), pattern.isExactly(reader.name()));
        } else if (goesDeeper && kind == EntryKind::kFolder) {
            folders.emplace_back(reader.name(), false);
        }
    }
    addFiles(folder.path, files);
    addFolders(folder, folders);
}

void Glob::addFiles(const std::string& path, std::vector<SortedName>& files) {
    std::sort(files.begin(), files.end());
    for (const SortedName& file : files) {
        result.append(OdAnsiString(joinPath(path, file.name)));
    }
}

// The last one put there is the next one searched.
void Glob::addFolders(const Folder& parent, std::vector<SortedName>& folders) {
    std::sort(folders.begin(), folders.end());
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        pending.push_back({joinPath(parent.path, folder->name), parent.level + 1});
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
