#include "reportsections.h"

#include "indentedjson.h"

namespace inspect {

namespace {

Markup list(const std::vector<std::string>& texts) {
    Markup items;
    for (const std::string& text : texts) {
        items += element("li", text);
    }
    return items.empty() ? Markup() : element("ul", items);
}

Markup lead(const std::string& text) {
    return element("p", {{"class", "lead"}}, escaped(text));
}

Markup marked(const std::string& word) {
    return element("strong", {{"class", "mark"}}, escaped(word));
}

Row moduleRow(const ModuleRecord& module) {
    return {{escaped(module.asked),
             module.loaded ? escaped(module.file)
                           : marked("Not loaded") + escaped(": " + module.reason),
             escaped(durationText(module.milliseconds)), list(module.left)},
            module.loaded ? "" : "bad"};
}

// In words; settings of the record are "user file", "system file" and "run".
std::string originOf(const RunRecord& run, const std::string& key) {
    const auto found = run.origin.find(key);
    if (found == run.origin.end()) {
        return "unknown";
    }
    return found->second == "run" ? "added while the application ran" : "the " + found->second;
}

std::string levelText(int level) {
    switch (level) {
        case 5:
            return "5, error";
        case 4:
            return "4, survived failure";
        default:
            return std::to_string(level);
    }
}

}  // namespace

Markup modulesSection(const RunRecord& run) {
    std::vector<Row> rows;
    for (const bool loaded : {false, true}) {
        for (const ModuleRecord& module : run.modules) {
            if (module.loaded == loaded) {
                rows.push_back(moduleRow(module));
            }
        }
    }
    if (rows.empty()) {
        return lead("The run asked for no module.");
    }
    return table({{"Module", 20},
                  {"File, or why it wasn't loaded", 46},
                  {"Took", 10},
                  {"Services left registered at its end", 24}},
                 rows);
}

Markup servicesSection(const RunRecord& run) {
    std::vector<Row> rows;
    for (const ServiceRecord& service : run.services) {
        rows.push_back({{escaped(service.key), escaped(service.type), escaped(service.file)}, ""});
    }
    return rows.empty() ? lead("There was no service.")
                        : lead(
                              "The library's own are in the program that made this report: it "
                              "carries the library.") +
                              table({{"Key", 24}, {"Class", 42}, {"File", 34}}, rows);
}

Markup pathsSection(const RunRecord& run) {
    std::vector<Row> rows;
    for (const PathList& paths : run.paths) {
        Markup items;
        bool allThere = true;
        for (const ListedPath& path : paths.paths) {
            items += element("li", path.isThere ? escaped(path.path)
                                                : escaped(path.path + " ") + marked("missing"));
            allThere = allThere && path.isThere;
        }
        rows.push_back(
            {{escaped(paths.key), items.empty() ? escaped("(empty)") : element("ol", items)},
             allThere ? "" : "warn"});
    }
    if (rows.empty()) {
        return lead("The run ended before its path lists were made.");
    }
    return lead(
               "Searched in this order. Whether a path is there was seen at the end of start-up.") +
           table({{"List", 22}, {"Paths", 78}}, rows);
}

Markup configurationSection(const RunRecord& run) {
    std::vector<Row> rows;
    for (const Setting& setting : run.user) {
        rows.push_back({{escaped(setting.key), escaped(originOf(run, setting.key)),
                         element("pre", indentedJson(setting.json))},
                        ""});
    }
    return element("h3", "Core") + lead("From the system file " + run.systemPath) +
           element("pre", {{"class", "block"}}, escaped(indentedJson(run.core))) +
           element("h3", "User") +
           lead(
               "As it stood at the end of start-up, which may have changed what a member was when "
               "it was taken from its file.") +
           (rows.empty() ? lead("There was no User branch.")
                         : table({{"Setting", 22}, {"Comes from", 20}, {"Value", 58}}, rows));
}

Markup logSection(const RunRecord& run) {
    std::vector<Row> rows;
    for (const LogRecord& line : run.log) {
        rows.push_back({{escaped(levelText(line.level)),
                         escaped(line.unit + ":" + std::to_string(line.line) + " " + line.function),
                         escaped(line.text)},
                        line.level >= 5   ? "bad"
                        : line.level == 4 ? "warn"
                                          : ""});
    }
    return rows.empty() ? lead("No line was written.")
                        : table({{"Level", 16}, {"Written by", 32}, {"Text", 52}}, rows);
}

}  // namespace inspect
