#include "reportsections.h"

#include <algorithm>

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
                              table({{"Key", 26}, {"Class", 34}, {"File", 40}}, rows);
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

std::string indentedJson(const std::string& json) {
    std::string result;
    std::size_t depth = 0;
    bool inText = false;
    const auto newLine = [&] { result += "\n" + std::string(2 * depth, ' '); };
    for (std::size_t at = 0; at < json.size(); ++at) {
        const char c = json[at];
        if (inText) {
            result += c;
            if (c == '\\' && at + 1 < json.size()) {
                result += json[++at];
            }
            inText = c != '"';
        } else if ((c == '{' || c == '[') && at + 1 < json.size() && json[at + 1] == c + 2) {
            // Nothing in it; both kinds of bracket close with the second character after them.
            result += {c, json[++at]};
        } else if (c == '{' || c == '[') {
            result += c;
            ++depth;
            newLine();
        } else if (c == '}' || c == ']') {
            depth -= std::min<std::size_t>(depth, 1);
            newLine();
            result += c;
        } else {
            inText = c == '"';
            result += c;
            if (c == ',') {
                newLine();
            } else if (c == ':') {
                result += ' ';
            }
        }
    }
    return result;
}

}  // namespace inspect
