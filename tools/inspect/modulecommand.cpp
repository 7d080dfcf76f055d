// vemo-inspect module
#include <iostream>

#include "arguments.h"
#include "jsontext.h"
#include "modulecheck.h"
#include "subcommands.h"

namespace inspect {

namespace {

std::string versionOf(const ModuleCheck& check) {
    return check.interfaceVersion ? std::to_string(check.interfaceVersion->major) + "." +
                                        std::to_string(check.interfaceVersion->minor)
                                  : "";
}

std::string jsonTexts(const std::vector<std::string>& texts) {
    JsonArray array;
    for (const std::string& text : texts) {
        array.add(jsonText(text));
    }
    return array.json();
}

std::string jsonOf(const ModuleCheck& check) {
    const std::string version = versionOf(check);
    return JsonObject()
        .add("path", jsonText(check.path))
        .add("ok", inspect::jsonOf(check.ok))
        .add("architecture", check.architecture.empty() ? "null" : jsonText(check.architecture))
        .add("ownArchitecture", inspect::jsonOf(check.isOwnArchitecture))
        .add("interfaceVersion", version.empty() ? "null" : jsonText(version))
        .add("interfaceAccepted", inspect::jsonOf(check.interfaceAccepted))
        .add("missingLibraries", jsonTexts(check.missingLibraries))
        .add("unresolvedSymbols", jsonTexts(check.unresolvedSymbols))
        .add("hasEntry", inspect::jsonOf(check.hasEntry))
        .add("reasons", jsonTexts(check.reasons))
        .json();
}

void print(const ModuleCheck& check) {
    std::cout << check.path << ": " << (check.ok ? "would load" : "would not load");
    if (!check.architecture.empty()) {
        std::cout << ", " << check.architecture;
    }
    const std::string version = versionOf(check);
    std::cout << (version.empty() ? "" : ", interfaces " + version) << '\n';
    for (const std::string& reason : check.reasons) {
        std::cout << "    " << reason << '\n';
    }
}

}  // namespace

int inspectModules(const std::vector<std::string>& words) {
    const Arguments arguments(words, {.flags = {"--json"}, .values = {}});
    if (arguments.operands().empty() || !arguments.behindDashes().empty()) {
        throw UsageError("module needs files.");
    }
    JsonArray answer;
    for (const std::string& file : arguments.operands()) {
        const ModuleCheck check = checkModule(file);
        if (arguments.has("--json")) {
            answer.add(jsonOf(check));
        } else {
            print(check);
        }
    }
    if (arguments.has("--json")) {
        std::cout << answer.json() << '\n';
    }
    return 0;
}

}  // namespace inspect
