// vemo-inspect: shows what the library makes of fonts, messages, command lines and configurations.
#include <clocale>
#include <cstdlib>
#include <exception>
#include <iostream>

#include <drawing/runtime.h>

#include "arguments.h"
#include "subcommands.h"

namespace {

using inspect::Subcommand;

constexpr int kWrongUse = 2;

constexpr Subcommand kSubcommands[] = {
    {"fonts", "[--json] PATH...", "what the font readers see in files, or below folders",
     inspect::inspectFonts},
    {"message", "[--json] CODE|FIRST-LAST...", "the texts of result and message codes",
     inspect::inspectMessages},
    {"language", "[--json] ID...", "the tags of language identifiers", inspect::inspectLanguages},
    {"boot",
     "[--json] [--appdata DIR] [--documents DIR] [--temp DIR] [--sysfonts DIR] [--modules DIR] "
     "-- ARGV0 [ARG...]",
     "a whole life of the library with that command line", inspect::inspectBoot},
    {"report",
     "[--appdata DIR] [--documents DIR] [--temp DIR] [--sysfonts DIR] [--modules DIR] "
     "-- ARGV0 [ARG...]",
     "the same as a page for a support ticket", inspect::inspectReport},
    {"find",
     "[--json] [--hint N] [--drawing FILE] (NAME | --typeface NAME [--bold] [--italic]) "
     "[--appdata DIR] ... -- ARGV0 [ARG...]",
     "where a file is found, and where it was looked for", inspect::inspectFind},
    {"module", "[--json] FILE...",
     "whether files would load as modules here, without running any of their code",
     inspect::inspectModules},
};

void showUsage(std::ostream& out) {
    out << "usage:\n";
    for (const Subcommand& subcommand : kSubcommands) {
        out << "  vemo-inspect " << subcommand.name << ' ' << subcommand.usage << "\n      "
            << subcommand.help << '\n';
    }
}

int wrongUse(const std::string& text) {
    std::cerr << "vemo-inspect: " << text << '\n';
    showUsage(std::cerr);
    return kWrongUse;
}

int failed(const std::string& text) {
    std::cerr << "vemo-inspect: " << text << '\n';
    return EXIT_FAILURE;
}

int run(const Subcommand& subcommand, const std::vector<std::string>& words) {
    try {
        const int status = subcommand.run(words);
        std::cout.flush();
        return std::cout ? status : failed("The answer couldn't be written.");
    } catch (const inspect::UsageError& error) {
        return wrongUse(error.what());
    } catch (const OdError& error) {
        return failed(OdStringToUtf8String(error.description()).str());
    } catch (const std::exception& error) {
        return failed(error.what());
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    std::setlocale(LC_NUMERIC, "C");
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.empty()) {
        return wrongUse("Which subcommand?");
    }
    if (words[0] == "--help" || words[0] == "-h") {
        showUsage(std::cout);
        return EXIT_SUCCESS;
    }
    for (const Subcommand& subcommand : kSubcommands) {
        if (words[0] == subcommand.name) {
            return run(subcommand, {words.begin() + 1, words.end()});
        }
    }
    return wrongUse("There is no subcommand " + words[0] + ".");
}
