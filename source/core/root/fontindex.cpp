#include "fontindex.h"

#include <clocale>
#include <cwchar>
#include <cwctype>

#include <utils/paths.h>

namespace vosi {

namespace {

// Two names fold to the same text when wcscasecmp takes them for equal. Like it, this reads up to
// the first NUL.
std::wstring folded(const OdString& name) {
    std::wstring text(name.c_str());
    for (wchar_t& character : text) {
        character = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
    }
    return text;
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
    const auto found = firstByName.find(folded(name));
    return found == firstByName.end() ? OdString() : list[found->second];
}

void FileNameIndex::takeLocale() {
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    if (locale != current) {
        firstByName.clear();
        indexedCount = 0;
        locale = current;
    }
}

void FileNameIndex::takeNewPaths(const OdStringArray& list) {
    for (; indexedCount < list.size(); ++indexedCount) {
        firstByName.emplace(folded(voutGetLastFileNameInPathW(list[indexedCount])), indexedCount);
    }
}

}  // namespace vosi
