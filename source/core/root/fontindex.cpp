#include "fontindex.h"

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <string_view>

#include <utils/paths.h>

namespace vosi {

namespace {

// Where the path's last component begins, as voutGetLastFileNameInPathW has it.
const OdChar* lastComponent(const OdString& path) {
    const std::wstring_view text = path.view();
    const auto separator = std::find_if(text.rbegin(), text.rend(), [](OdChar character) {
        return character == L'/' || character == L'\\';
    });
    return path.c_str() + (text.rend() - separator);
}

OdChar smallLetterOf(OdChar character) {
    return static_cast<OdChar>(std::towlower(static_cast<std::wint_t>(character)));
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
    const auto place = firstPlace(name, hashOf(name), list);
    return place ? list[*place] : OdString();
}

void FileNameIndex::takeLocale() {
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    if (locale != current) {
        firstPlaces.clear();
        indexedCount = 0;
        locale = current;
        for (std::size_t character = 0; character < smallLetters.size(); ++character) {
            smallLetters[character] = smallLetterOf(static_cast<OdChar>(character));
        }
    }
}

void FileNameIndex::takeNewPaths(const OdStringArray& list) {
    if (indexedCount == list.size()) {
        return;
    }
    firstPlaces.reserve(list.size());
    for (; indexedCount < list.size(); ++indexedCount) {
        const OdChar* const name = lastComponent(list[indexedCount]);
        const std::size_t hash = hashOf(name);
        if (!firstPlace(name, hash, list)) {
            firstPlaces.emplace(hash, indexedCount);
        }
    }
}

// The same for names that wcscasecmp takes for equal. Like it, this reads up to the first NUL.
std::size_t FileNameIndex::hashOf(const OdChar* name) const {
    constexpr std::size_t kPrime = 0x100000001b3;
    std::size_t hash = 0xcbf29ce484222325;
    for (; *name != L'\0'; ++name) {
        const auto character = static_cast<char32_t>(*name);
        const OdChar folded =
            character < smallLetters.size() ? smallLetters[character] : smallLetterOf(*name);
        hash = (hash ^ static_cast<std::size_t>(folded)) * kPrime;
    }
    return hash;
}

std::optional<FileNameIndex::Place> FileNameIndex::firstPlace(const OdChar* name, std::size_t hash,
                                                              const OdStringArray& list) const {
    const auto [first, last] = firstPlaces.equal_range(hash);
    const auto found = std::find_if(first, last, [&](const auto& candidate) {
        return wcscasecmp(lastComponent(list[candidate.second]), name) == 0;
    });
    return found == last ? std::nullopt : std::optional(found->second);
}

}  // namespace vosi
