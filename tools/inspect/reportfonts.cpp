// What the page tells of fonts.
#include <algorithm>

#include "reportsections.h"

namespace inspect {

namespace {

const FontSearch* substituteFor(const RunRecord& run, const FontSearch& search) {
    const auto found = std::find_if(
        run.fontSearches.begin(), run.fontSearches.end(), [&](const FontSearch& other) {
            return other.isForSubstitute && other.wanted == search.wanted && !other.answer.empty();
        });
    return found == run.fontSearches.end() ? nullptr : &*found;
}

// A font is asked for by several roads, one of which is enough.
bool isFoundOtherwise(const RunRecord& run, const FontSearch& search) {
    return std::any_of(
        run.fontSearches.begin(), run.fontSearches.end(), [&](const FontSearch& other) {
            return !other.isForSubstitute && other.wanted == search.wanted && !other.answer.empty();
        });
}

bool isMissing(const RunRecord& run, const FontSearch& search) {
    return search.answer.empty() && !search.isForSubstitute && !isFoundOtherwise(run, search) &&
           !substituteFor(run, search);
}

Row searchRow(const RunRecord& run, const FontSearch& search) {
    Row row;
    Markup served = escaped(search.answer);
    if (search.answer.empty()) {
        served = element("strong", {{"class", "mark"}},
                         escaped(search.isForSubstitute ? "None" : "Not found"));
        row.kind = isMissing(run, search) ? "bad" : "warn";
        if (const FontSearch* substitute = substituteFor(run, search);
            substitute && !search.isForSubstitute) {
            served += escaped("; " + substitute->answer + " was named in its place");
            row.kind = "warn";
        }
    }
    row.cells = {escaped(search.wanted), escaped(search.as), served,
                 escaped(std::to_string(search.times))};
    return row;
}

std::string stylesText(int styles) {
    std::string text;
    for (const auto& [bit, name] :
         {std::pair{1, "bold"}, std::pair{2, "italic"}, std::pair{4, "bold italic"}}) {
        if ((styles & bit) != 0) {
            text += (text.empty() ? "" : ", ") + std::string(name);
        }
    }
    return text;
}

Markup collapsed(const std::string& summary, const Markup& content) {
    return element("details", element("summary", summary) + content);
}

Markup files(const std::vector<std::string>& paths) {
    Markup items;
    for (const std::string& path : paths) {
        items += element("li", path);
    }
    return items.empty() ? element("p", "None.") : element("ul", items);
}

}  // namespace

std::size_t fontsNotFound(const RunRecord& run) {
    std::vector<std::string> names;
    for (const FontSearch& search : run.fontSearches) {
        if (isMissing(run, search) &&
            std::find(names.begin(), names.end(), search.wanted) == names.end()) {
            names.push_back(search.wanted);
        }
    }
    return names.size();
}

Markup fontSearchesSection(const RunRecord& run) {
    std::vector<Row> rows;
    for (const FontSearch& search : run.fontSearches) {
        rows.push_back(searchRow(run, search));
    }
    if (rows.empty()) {
        return element("p", {{"class", "lead"}}, escaped("The run looked for no font."));
    }
    return element(
               "p", {{"class", "lead"}},
               escaped("Each font that was looked for, those that the drawings name among them, "
                       "in the order of the first time. A face that isn't found is often "
                       "looked for by its file's name next, which is a row of its own.")) +
           table({{"Asked for", 24}, {"As", 22}, {"Served by", 44}, {"Times", 10}}, rows);
}

Markup fontListsSection(const RunRecord& run) {
    std::vector<Row> rows;
    for (const FontFamily& family : run.fonts.families) {
        rows.push_back({{escaped(family.name),
                         escaped(family.chineseName == family.name ? "" : family.chineseName),
                         escaped(stylesText(family.styles))},
                        ""});
    }
    return collapsed(counted(rows.size(), "TrueType family", "TrueType families"),
                     table({{"Family", 40}, {"Chinese name", 30}, {"Styles besides regular", 30}},
                           rows)) +
           collapsed(counted(run.fonts.mainShx.size(), "main SHX font", "main SHX fonts"),
                     files(run.fonts.mainShx)) +
           collapsed(counted(run.fonts.bigShx.size(), "big font", "big fonts"),
                     files(run.fonts.bigShx));
}

}  // namespace inspect
