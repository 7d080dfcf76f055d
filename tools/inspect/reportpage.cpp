#include "reportpage.h"

#include <limits>

#include <core/vemo_root.h>

#include "reporthtml.h"
#include "reportsections.h"
#include "reportstyle.h"
#include "reporttimeline.h"

namespace inspect {

namespace {

struct Counts {
    std::size_t failedModules = 0;
    std::size_t missingPaths = 0;
    std::size_t allPaths = 0;
    std::size_t lostFonts = 0;
};

Counts countsOf(const RunRecord& run) {
    Counts counts;
    for (const ModuleRecord& module : run.modules) {
        counts.failedModules += module.loaded ? 0 : 1;
    }
    for (const PathList& list : run.paths) {
        for (const ListedPath& path : list.paths) {
            counts.missingPaths += path.isThere ? 0 : 1;
            ++counts.allPaths;
        }
    }
    counts.lostFonts = fontsNotFound(run);
    return counts;
}

struct Verdict {
    const char* kind;
    std::string words;
};

Verdict verdictOf(const RunRecord& run, const Counts& counts) {
    if (!run.result) {
        return {"bad", "The application didn't start: an exception ended its start-up."};
    }
    if (*run.result == kVemoNoMainWindow) {
        return {"bad",
                "The application didn't start: no module registered a main window (result 401)."};
    }
    if (*run.result != 0) {
        return {"bad", "The application didn't start: the main window gave the result " +
                           std::to_string(*run.result) + "."};
    }
    if (!run.error.empty()) {
        return {"bad", "The application started, and an exception ended its shut-down."};
    }
    if (counts.failedModules > 0) {
        return {"warn", "The application started, without " + std::to_string(counts.failedModules) +
                            " of its modules."};
    }
    return {"good", "The application started and ended as it should."};
}

void addFact(Markup& facts, const std::string& name, const Markup& value) {
    facts += element("div", element("dt", name) + element("dd", value));
}

Markup link(const char* target, const std::string& text) {
    return element("a", {{"href", std::string("#") + target}}, escaped(text));
}

std::string joined(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

Markup factsOf(const RunRecord& run, const Counts& counts, const std::string& made) {
    const std::size_t loaded = run.modules.size() - counts.failedModules;
    Markup facts;
    addFact(facts, "Result", escaped(run.result ? std::to_string(*run.result) : "none"));
    addFact(facts, "Raised", escaped(run.error.empty() ? "nothing" : run.error));
    addFact(facts, "Modules",
            link("modules", std::to_string(loaded) + " loaded, " +
                                std::to_string(counts.failedModules) + " failed"));
    addFact(facts, "Missing folders and files",
            link("paths", std::to_string(counts.missingPaths) + " of the " +
                              std::to_string(counts.allPaths) + " in the path lists"));
    addFact(facts, "Font names without file or substitute",
            link("asked", std::to_string(counts.lostFonts)));
    addFact(facts, "Log", link("log", counted(run.log.size(), "line", "lines")));
    addFact(facts, "Start-up took", link("start", durationText(run.startedAfter)));
    addFact(facts, "Report made", escaped(made));
    addFact(facts, "Command line", escaped(joined(run.commandLine)));
    addFact(facts, "System file", escaped(run.systemPath));
    addFact(facts, "User file", escaped(run.userPath));
    return element("dl", facts);
}

struct Section {
    const char* id;
    const char* title;
    Markup content;
};

std::vector<Section> sectionsOf(const RunRecord& run) {
    const double forEver = std::numeric_limits<double>::max();
    return {{"start", "Start-up over time", timeline(run, 0, run.startedAfter, "Start-up")},
            {"modules", "Modules", modulesSection(run)},
            {"services", "Services", servicesSection(run)},
            {"paths", "Path lists", pathsSection(run)},
            {"configuration", "Configuration", configurationSection(run)},
            {"asked", "Fonts that were asked for", fontSearchesSection(run)},
            {"fonts", "All fonts", fontListsSection(run)},
            {"log", "Log", logSection(run)},
            {"end", "Shut-down over time", timeline(run, run.startedAfter, forEver, "Shut-down")}};
}

Markup head() {
    return element("head", trusted("<meta charset=\"utf-8\"/>"
                                   "<meta name=\"viewport\" content=\"width=device-width\"/>"
                                   // A page that is passed on must not call anybody.
                                   "<meta http-equiv=\"Content-Security-Policy\" "
                                   "content=\"default-src 'none'; style-src 'unsafe-inline'\"/>") +
                               element("title", "Start-up report") +
                               element("style", trusted(kReportStyle)));
}

}  // namespace

std::string reportPage(const RunRecord& run, const std::string& made) {
    const Counts counts = countsOf(run);
    const Verdict verdict = verdictOf(run, counts);
    const std::vector<Section> sections = sectionsOf(run);
    Markup contents;
    Markup body;
    for (const Section& section : sections) {
        contents += element("li", link(section.id, section.title));
        body += element("section", {{"id", section.id}},
                        element("h2", section.title) + section.content) +
                trusted("\n");
    }
    const Markup top = element(
        "header", element("h1", "Start-up report") +
                      element("p", {{"class", std::string("verdict ") + verdict.kind}},
                              escaped(verdict.words)) +
                      factsOf(run, counts, made) +
                      element("nav", {{"aria-label", "Contents"}}, element("ul", contents)));
    return "<!DOCTYPE html>\n" +
           element("html", {{"lang", "en"}}, head() + element("body", top + element("main", body)))
               .str() +
           "\n";
}

}  // namespace inspect
