// What the page tells of fonts.
#include <algorithm>

#include "reportsections.h"

namespace inspect {

namespace {

// The face's row tells it.
bool isForFaceAlone(const FontSearch& search) {
    return search.times == search.timesForFace;
}

// The first search for the name that has an answer; null when there is none.
const FontSearch* answered(const RunRecord& run, const std::string& wanted, bool asSubstitute) {
    const auto found = std::find_if(run.fontSearches.begin(), run.fontSearches.end(),
                                    [&](const FontSearch& other) {
                                        return other.isForSubstitute == asSubstitute &&
                                               other.wanted == wanted && !other.answer.empty();
                                    });
    return found == run.fontSearches.end() ? nullptr : &*found;
}

// The same by the name that was asked for, and by those of the files that were looked for next.
const FontSearch* answeredByAnyName(const RunRecord& run, const FontSearch& search,
                                    bool asSubstitute) {
    const FontSearch* found = answered(run, search.wanted, asSubstitute);
    for (const std::string& file : search.filesNext) {
        found = found ? found : answered(run, file, asSubstitute);
    }
    return found;
}

// A font is asked for by several roads, one of which is enough.
bool isMissing(const RunRecord& run, const FontSearch& search) {
    return search.answer.empty() && !search.isForSubstitute && !isForFaceAlone(search) &&
           !answeredByAnyName(run, search, false) && !answeredByAnyName(run, search, true);
}

Markup mark(const std::string& words) {
    return element("strong", {{"class", "mark"}}, escaped(words));
}

struct Served {
    Markup by;
    const char* kind = "";  // of the row
};

Served servedBy(const RunRecord& run, const FontSearch& search) {
    if (!search.answer.empty()) {
        return {escaped(search.answer)};
    }
    if (search.isForSubstitute) {
        return {mark("None"), "warn"};
    }
    if (const FontSearch* file = answeredByAnyName(run, search, false);
        file && !search.filesNext.empty()) {
        return {escaped(file->answer + ", found by the file's name " + file->wanted)};
    }
    Markup words = mark("Not found");
    for (const std::string& file : search.filesNext) {
        words += escaped(", nor the file " + file);
    }
    if (const FontSearch* substitute = answeredByAnyName(run, search, true)) {
        words += escaped("; " + substitute->answer + " was named in its place");
    }
    return {words, isMissing(run, search) ? "bad" : "warn"};
}

Row searchRow(const RunRecord& run, const FontSearch& search) {
    const Served served = servedBy(run, search);
    return {{escaped(search.wanted), escaped(search.as), served.by,
             escaped(std::to_string(search.times - search.timesForFace))},
            served.kind};
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
        if (!isForFaceAlone(search)) {
            rows.push_back(searchRow(run, search));
        }
    }
    if (rows.empty()) {
        return element("p", {{"class", "lead"}}, escaped("The run looked for no font."));
    }
    return element(
               "p", {{"class", "lead"}},
               escaped("Each font that was looked for, those that the drawings name among them, "
                       "in the order of the first time. A TrueType file that was looked for "
                       "directly behind a face that isn't there belongs to that face.")) +
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
