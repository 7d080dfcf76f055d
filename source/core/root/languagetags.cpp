#include "languagetags.h"

#include <algorithm>
#include <iterator>

namespace vosi {

namespace {

struct LanguageRow {
    const char* language;
    const char* country;
    const char* script;
    std::int32_t codePage;
    std::uint16_t languageId;
};

constexpr LanguageRow kLanguages[] = {
#define LANGUAGE(id, language, country, script, codePage) {language, country, script, codePage, id},
#include "languagetags.def"
#undef LANGUAGE
};
static_assert(std::size(kLanguages) == 201);

}  // namespace

OdString languageTag(std::uint16_t languageId) {
    const auto* const row = std::find_if(
        std::begin(kLanguages), std::end(kLanguages),
        [languageId](const LanguageRow& known) { return known.languageId == languageId; });
    return row == std::end(kLanguages) ? OdString(L"en-US")
                                       : OdString(row->language) + L"-" + row->country;
}

}  // namespace vosi
