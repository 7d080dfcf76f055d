#include "commandregistry.h"

#include <exception>

#include <app/aliasresolver.h>
#include <app/services.h>

#include "say.h"
#include "text.h"

namespace vemoapp {

namespace {

std::string resolved(const std::string& word) {
    auto aliases = service<AliasResolver>(kAliasResolverKey);
    return aliases ? aliases->resolve(word) : upperCase(word);
}

void runGuarded(const Command& command, const Command::Arguments& arguments) {
    try {
        command.run(arguments);
    } catch (const OdError& error) {
        say(command.name + ": " + OdStringToUtf8String(error.description()).str());
    } catch (const std::exception& error) {
        say(command.name + ": " + error.what());
    }
}

}  // namespace

std::vector<Command> CommandRegistry::commands() const {
    std::vector<Command> all;
    for (const auto& [name, command] : byName) {
        all.push_back(command);
    }
    return all;
}

void CommandRegistry::runLine(const std::string& line) {
    Command::Arguments words = splitWords(line);
    if (words.empty()) {
        return;
    }
    auto found = byName.find(resolved(words.front()));
    if (found == byName.end()) {
        say("Unknown command \"" + words.front() + "\"; HELP lists the commands.");
        return;
    }
    // A copy: the command may take itself out of the table while it runs.
    Command command = found->second;
    words.erase(words.begin());
    runGuarded(command, words);
}

}  // namespace vemoapp
