#include "fontindex.h"

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <functional>

#include <utils/paths.h>

namespace vosi {

namespace {

// Two names fold to the same text when wcscasecmp takes them for equal. Like it, this reads up to
// the first NUL.
std::wstring folded(const OdChar* name) {
    std::wstring text(name);
    for (wchar_t& character : text) {
        character = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
    }
    return text;
}

std::size_t hashOf(const std::wstring& foldedName) {
    return std::hash<std::wstring>()(foldedName);
}

// Where the path's last component begins, as voutGetLastFileNameInPathW has it.
const OdChar* lastComponent(const OdString& path) {
    return path.c_str() + (path.view().find_last_of(L"/\\") + 1);
}

// A thread may have a locale of its own, which has no name to compare by.
bool threadHasOwnLocale() {
    return uselocale(static_cast<locale_t>(nullptr)) != LC_GLOBAL_LOCALE;
}

}  // namespace

OdRxObjectPtr documentIndex(VosiDocument* document, const OdChar* key) {
    const auto data = document ? document->documentData() : OdSmartPtr<VosiDocumentData>();
    const auto dictionary = data.isNull() ? OdRxDictionaryPtr() : data->dictionary();
    return dictionary.isNull() ? OdRxObjectPtr() : dictionary->getAt(key);
}

OdString findByFileName(const OdString& name, const OdStringArray& list) {
    for (const OdString& path : list) {
        if (wcscasecmp(voutGetLastFileNameInPathW(path), name) == 0) {
            return path;
        }
    }
    return OdString();
}

OdString FileNameIndex::find(const OdString& name, const OdStringArray& list) {
    if (threadHasOwnLocale()) {
        return findByFileName(name, list);
    }
    takeLocale();
    takeNewPaths(list);
    const auto place = firstPlace(folded(name), list);
    return place ? list[*place] : OdString();
}

void FileNameIndex::takeLocale() {
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    if (locale != current) {
        firstPlaces.clear();
        indexedCount = 0;
        locale = current;
    }
}

void FileNameIndex::takeNewPaths(const OdStringArray& list) {
    for (; indexedCount < list.size(); ++indexedCount) {
        const std::wstring name = folded(lastComponent(list[indexedCount]));
        if (!firstPlace(name, list)) {
            firstPlaces.emplace(hashOf(name), indexedCount);
        }
    }
}

std::optional<FileNameIndex::Place> FileNameIndex::firstPlace(const std::wstring& foldedName,
                                                              const OdStringArray& list) const {
    const auto [first, last] = firstPlaces.equal_range(hashOf(foldedName));
    const auto found = std::find_if(first, last, [&](const auto& candidate) {
        return folded(lastComponent(list[candidate.second])) == foldedName;
    });
    return found == last ? std::nullopt : std::optional(found->second);
}

}  // namespace vosi
