#include "reporttimeline.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace inspect {

namespace {

constexpr int kRowHeight = 24;
constexpr int kHeadHeight = 28;
constexpr std::size_t kRowsOfPiece = 6;
constexpr int kMostTicks = 6;
// Of the width; so that the shortest span can be seen.
constexpr double kLeastWidth = 0.25;

struct Bar {
    std::string name;
    double began = 0;
    double milliseconds = 0;
    const char* kind = "step";
    std::vector<std::string> did;
    std::size_t depth = 0;

    double end() const { return began + milliseconds; }
};

/// Where a bar lies in the picture, in per cent of the width.
struct Extent {
    double from;
    double to;
};

void addSteps(std::vector<Bar>& bars, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        bars.push_back({step.raised ? step.name + " (an exception ended it)" : step.name,
                        step.began, step.milliseconds, step.raised ? "failed" : "step", step.did});
        addSteps(bars, step.steps);
    }
}

void addModule(std::vector<Bar>& bars, const ModuleRecord& module) {
    Bar bar{"module " + module.asked, module.began, module.milliseconds, "module", module.did};
    if (!module.loaded) {
        bar.name += " (not loaded)";
        bar.kind = "failed";
        bar.did.push_back(module.reason);
    }
    bars.push_back(std::move(bar));
    addSteps(bars, module.steps);
}

void setDepths(std::vector<Bar>& bars) {
    // Times are sums of rounded numbers.
    constexpr double kNanosecond = 1e-6;
    std::vector<double> ends;
    for (Bar& bar : bars) {
        while (!ends.empty() && ends.back() <= bar.began + kNanosecond) {
            ends.pop_back();
        }
        bar.depth = ends.size();
        ends.push_back(bar.end());
    }
}

std::vector<Bar> barsBetween(const RunRecord& run, double begin, double end) {
    std::vector<Bar> bars;
    addSteps(bars, run.steps);
    for (const ModuleRecord& module : run.modules) {
        addModule(bars, module);
    }
    std::erase_if(bars, [&](const Bar& bar) { return bar.began < begin || bar.began >= end; });
    std::stable_sort(bars.begin(), bars.end(), [](const Bar& first, const Bar& second) {
        return first.began != second.began ? first.began < second.began
                                           : first.milliseconds > second.milliseconds;
    });
    setDepths(bars);
    return bars;
}

std::string percent(double value) {
    char text[64] = "";
    std::snprintf(text, sizeof text, "%.3f%%", value);
    return text;
}

// 1, 2 or 5 times a power of ten.
double tickStep(double length) {
    const double least = length / kMostTicks;
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least) {
            return factor * power;
        }
    }
    return 10 * power;
}

/// Where the lines of the ticks stand, and what they mean.
std::vector<std::pair<double, std::string>> ticksOf(double length) {
    std::vector<std::pair<double, std::string>> ticks;
    const double step = tickStep(length);
    for (int number = 0; number * step < length * 0.98; ++number) {
        char label[64] = "";
        std::snprintf(label, sizeof label, "%.6g ms", number * step);
        ticks.emplace_back(100 * number * step / length, label);
    }
    return ticks;
}

Markup tickLines(double length, int top, int bottom) {
    Markup lines;
    for (const auto& [at, label] : ticksOf(length)) {
        lines += element("line",
                         {{"class", "tick"},
                          {"x1", percent(at)},
                          {"x2", percent(at)},
                          {"y1", std::to_string(top)},
                          {"y2", std::to_string(bottom)}},
                         Markup());
    }
    return lines;
}

Markup tickLabels(double length) {
    Markup labels;
    for (const auto& [at, label] : ticksOf(length)) {
        // The last label would leave the picture to the right.
        labels += element("text",
                          {{"class", "tick"},
                           {"x", percent(at)},
                           {"dx", at > 85 ? "-4" : "2"},
                           {"y", "14"},
                           {"text-anchor", at > 85 ? "end" : "start"}},
                          escaped(label));
    }
    return labels;
}

// Beside the bar where there is room for it, otherwise over it.
Markup label(const Bar& bar, const Extent& extent, int top) {
    const bool isOver = extent.from < 50 && extent.to > 50;
    Attributes attributes{{"class", isOver ? "over" : "beside"}, {"y", std::to_string(top + 16)}};
    if (extent.to <= 50) {
        attributes.insert(attributes.end(), {{"x", percent(extent.to)}, {"dx", "6"}});
    } else if (extent.from >= 50) {
        attributes.insert(attributes.end(),
                          {{"x", percent(extent.from)}, {"dx", "-6"}, {"text-anchor", "end"}});
    } else {
        attributes.insert(attributes.end(), {{"x", percent(extent.from)}, {"dx", "6"}});
    }
    return element("text", attributes, escaped(bar.name + ", " + durationText(bar.milliseconds)));
}

Markup piece(const char* kind, int height, const Markup& content) {
    return element("svg",
                   {{"class", kind},
                    {"aria-hidden", "true"},
                    {"width", "100%"},
                    {"height", std::to_string(height)}},
                   content) +
           trusted("\n");
}

Markup barWithLabel(const Bar& bar, double begin, double length, int top) {
    const double from = std::min(100 * (bar.began - begin) / length, 100 - kLeastWidth);
    const double width = std::clamp(100 * bar.milliseconds / length, kLeastWidth, 100 - from);
    // What lies in another bar is thinner.
    const int inset = bar.depth == 0 ? 2 : 4;
    return element("rect",
                   {{"class", bar.kind},
                    {"x", percent(from)},
                    {"width", percent(width)},
                    {"y", std::to_string(top + inset)},
                    {"height", std::to_string(kRowHeight - 2 * inset)},
                    {"rx", "2"}},
                   Markup()) +
           label(bar, {from, from + width}, top);
}

// In pieces, one below the other, between which a printed page may end.
Markup picture(const std::vector<Bar>& bars, double begin, double length,
               const std::string& title) {
    Markup pieces = piece("ticks", kHeadHeight,
                          tickLabels(length) + tickLines(length, kHeadHeight - 8, kHeadHeight));
    for (std::size_t first = 0; first < bars.size(); first += kRowsOfPiece) {
        const std::size_t end = std::min(first + kRowsOfPiece, bars.size());
        const int height = static_cast<int>(end - first) * kRowHeight;
        Markup content = tickLines(length, 0, height);
        int top = 0;
        for (std::size_t index = first; index < end; ++index, top += kRowHeight) {
            content += barWithLabel(bars[index], begin, length, top) + trusted("\n");
        }
        pieces += piece("bars", height, content);
    }
    return element("div",
                   {{"role", "img"},
                    {"aria-label", title + ": a bar for each step and module; the table tells it"}},
                   pieces);
}

Markup asTable(const std::vector<Bar>& bars, double begin) {
    std::vector<Row> rows;
    for (const Bar& bar : bars) {
        Markup did;
        for (const std::string& what : bar.did) {
            did += element("li", what);
        }
        const std::string indent = "padding-left:" + std::to_string(bar.depth * 16) + "px";
        rows.push_back(
            {{element("span", {{"class", "nested"}, {"style", indent}}, escaped(bar.name)),
              escaped(durationText(bar.began - begin)), escaped(durationText(bar.milliseconds)),
              did.empty() ? Markup() : element("ul", did)},
             std::string(bar.kind) == "failed" ? "bad" : ""});
    }
    return table({{"Step or module", 32}, {"Began after", 12}, {"Took", 12}, {"What it did", 44}},
                 rows);
}

}  // namespace

Markup timeline(const RunRecord& run, double begin, double end, const std::string& title) {
    const std::vector<Bar> bars = barsBetween(run, begin, end);
    if (bars.empty()) {
        return element("p", "Nothing was recorded.");
    }
    const double first = bars.front().began;
    double last = first;
    for (const Bar& bar : bars) {
        last = std::max(last, bar.end());
    }
    const double length = std::max(last - first, 0.001);
    Markup legend = element("span", {{"class", "key step"}}, escaped("step")) +
                    element("span", {{"class", "key module"}}, escaped("module")) +
                    element("span", {{"class", "key failed"}}, escaped("failed"));
    return element("figure", element("figcaption", legend) + picture(bars, first, length, title)) +
           element("details", {{"class", "print"}},
                   element("summary", "The same as a table, with what each step did") +
                       asTable(bars, first));
}

}  // namespace inspect
