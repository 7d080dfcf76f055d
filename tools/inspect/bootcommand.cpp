// vemo-inspect boot
#include <algorithm>
#include <cstdio>
#include <iostream>

#include "bootrun.h"
#include "indentedjson.h"
#include "jsontext.h"
#include "subcommands.h"

namespace inspect {

namespace {

std::string milliseconds(double value) {
    char text[32] = "";
    std::snprintf(text, sizeof text, "%.3f", value);
    return text;
}

std::string jsonTexts(const std::vector<std::string>& texts) {
    JsonArray array;
    for (const std::string& text : texts) {
        array.add(jsonText(text));
    }
    return array.json();
}

template <class Record>
std::string jsonAll(const std::vector<Record>& records, std::string (*jsonOfOne)(const Record&)) {
    JsonArray array;
    for (const Record& record : records) {
        array.add(jsonOfOne(record));
    }
    return array.json();
}

std::string jsonOfStep(const Step& step) {
    return JsonObject()
        .add("name", jsonText(step.name))
        .add("ms", milliseconds(step.milliseconds))
        .add("raised", jsonOf(step.raised))
        .add("did", jsonTexts(step.did))
        .add("steps", jsonAll(step.steps, jsonOfStep))
        .json();
}

std::string jsonOfModule(const ModuleRecord& module) {
    return JsonObject()
        .add("asked", jsonText(module.asked))
        .add("loaded", jsonOf(module.loaded))
        .add("file", module.loaded ? jsonText(module.file) : "null")
        .add("reason", module.loaded ? "null" : jsonText(module.reason))
        .add("ms", milliseconds(module.milliseconds))
        .add("left", jsonTexts(module.left))
        .add("did", jsonTexts(module.did))
        .add("steps", jsonAll(module.steps, jsonOfStep))
        .json();
}

std::string jsonOfService(const ServiceRecord& service) {
    return JsonObject()
        .add("key", jsonText(service.key))
        .add("type", jsonText(service.type))
        .add("file", jsonText(service.file))
        .json();
}

std::string jsonOfLine(const LogRecord& line) {
    return JsonObject()
        .add("level", std::to_string(line.level))
        .add("unit", jsonText(line.unit))
        .add("line", std::to_string(line.line))
        .add("function", jsonText(line.function))
        .add("text", jsonText(line.text))
        .json();
}

std::string jsonOfRun(const RunRecord& run) {
    JsonObject origin;
    for (const auto& [key, source] : run.origin) {
        origin.add(key, jsonText(source));
    }
    return JsonObject()
        .add("result", run.result ? std::to_string(*run.result) : "null")
        .add("error", run.error.empty() ? "null" : jsonText(run.error))
        .add("sysConfigPath", jsonText(run.systemPath))
        .add("userConfigPath", jsonText(run.userPath))
        .add("tree", run.tree)
        .add("userTree", run.userTree)
        .add("origin", origin.json())
        .add("services", jsonAll(run.services, jsonOfService))
        .add("modules", jsonAll(run.modules, jsonOfModule))
        .add("log", jsonAll(run.log, jsonOfLine))
        .add("steps", jsonAll(run.steps, jsonOfStep))
        .add("userFile", jsonText(run.userFile))
        .json();
}

// ---- text ----

void printNotes(const std::vector<std::string>& did, const std::string& indent) {
    for (const std::string& what : did) {
        std::printf("               %s  - %s\n", indent.c_str(), what.c_str());
    }
}

void printSteps(const std::vector<Step>& steps, const std::string& indent) {
    for (const Step& step : steps) {
        std::printf("%10.3f ms  %s%s%s\n", step.milliseconds, indent.c_str(), step.name.c_str(),
                    step.raised ? " (an exception ended it)" : "");
        printNotes(step.did, indent);
        printSteps(step.steps, indent + "  ");
    }
}

void printModules(const std::vector<ModuleRecord>& modules) {
    for (const ModuleRecord& module : modules) {
        if (module.loaded) {
            std::printf("  %s: %s, %.3f ms\n", module.asked.c_str(), module.file.c_str(),
                        module.milliseconds);
        } else {
            std::printf("  %s: not loaded: %s\n", module.asked.c_str(), module.reason.c_str());
        }
        printNotes(module.did, "");
        printSteps(module.steps, "  ");
        for (const std::string& key : module.left) {
            std::printf("      left the service %s registered at its end\n", key.c_str());
        }
    }
}

void printRun(const RunRecord& run) {
    std::printf("Result of vemo_root: %s\n",
                run.result ? std::to_string(*run.result).c_str() : "none, it raised");
    if (!run.error.empty()) {
        std::printf("Raised: %s\n", run.error.c_str());
    }
    std::printf("System file: %s\nUser file:   %s\n\nSteps\n", run.systemPath.c_str(),
                run.userPath.c_str());
    printSteps(run.steps, "");
    std::printf("\nModules\n");
    printModules(run.modules);
    std::printf("\nServices\n");
    for (const ServiceRecord& service : run.services) {
        std::printf("  %s: %s in %s\n", service.key.c_str(), service.type.c_str(),
                    service.file.c_str());
    }
    std::printf("\nSettings of the user, and where they come from\n");
    for (const auto& [key, source] : run.origin) {
        std::printf("  %s: %s\n", key.c_str(), source.c_str());
    }
    std::printf("\nLog\n");
    for (const LogRecord& line : run.log) {
        std::printf("  %d %s:%d %s %s\n", line.level, line.unit.c_str(), line.line,
                    line.function.c_str(), line.text.c_str());
    }
    std::printf("\nTree\n%s\n\nUser tree\n%s\n\nUser file after the end\n%s\n",
                indentedJson(run.tree).c_str(), indentedJson(run.userTree).c_str(),
                run.userFile.c_str());
}

}  // namespace

int inspectBoot(const std::vector<std::string>& words) {
    const Arguments arguments(words, bootOptions());
    if (!arguments.operands().empty()) {
        throw UsageError("boot takes its command line behind --.");
    }
    const RunRecord run = bootAndExit(bootFolders(arguments), arguments.behindDashes());
    if (arguments.has("--json")) {
        std::cout << jsonOfRun(run) << '\n';
    } else {
        printRun(run);
    }
    std::fflush(stdout);
    if (!run.error.empty()) {
        throw Failure(run.error);
    }
    return 0;
}

}  // namespace inspect
