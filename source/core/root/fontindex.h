// Lists of what a scan of font folders found, and look-ups by file name over them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "core/vomoduleservices.h"

namespace vosi {

/// A folder to scan, with the number of levels of folders that count, 1 being the folder alone.
struct PathEntry {
    OdString path;
    std::int32_t depth;
};

/// The object under the key in the dictionary of the document, null when there is none; a null
/// document has none.
OdRxObjectPtr documentIndex(VosiDocument* document, const OdChar* key);

/// The first path of the list whose file name, with its extension, is the name; case is ignored in
/// the sense of the process's locale. Empty when there is none. A name with a folder fits nothing.
OdString findByFileName(const OdString& name, const OdStringArray& list);

/// Answers of findByFileName over one list that only ever grows. It is brought up to date by each
/// look-up, and made anew when the locale that decides on case has changed.
class FileNameIndex {
  public:
    OdString find(const OdString& name, const OdStringArray& list);

  private:
    using Place = OdStringArray::size_type;

    void takeLocale();
    void takeNewPaths(const OdStringArray& list);
    std::size_t hashOf(const OdChar* name) const;
    std::optional<Place> firstPlace(const OdChar* name, std::size_t hash,
                                    const OdStringArray& list) const;

    // The first places of names by the names' hashes: the names themselves are in the list.
    std::unordered_multimap<std::size_t, Place> firstPlaces;
    Place indexedCount = 0;
    std::string locale;
    std::array<OdChar, 0x80> smallLetters{};  // of the first characters, in the locale
};

}  // namespace vosi
