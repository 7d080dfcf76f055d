#include "terminalwindow.h"

#include <algorithm>
#include <iostream>

#include <unistd.h>

#include <app/commandtable.h>
#include <app/inputrunner.h>
#include <app/services.h>

#include "commandnode.h"
#include "findcommand.h"
#include "fontscommand.h"
#include "inspectcommands.h"
#include "linereader.h"
#include "messagecommand.h"
#include "say.h"
#include "text.h"

namespace vemoapp {

namespace {

constexpr std::size_t kMaxCommand = 4096;
constexpr std::uint32_t kTyped = 1;

void showHelp() {
    auto table = service<CommandTable>(kCommandTableKey);
    for (const Command& command : table->commands()) {
        std::string usage = command.name + " " + command.arguments;
        usage.resize(std::max<std::size_t>(usage.size(), 26), ' ');
        say("  " + usage + command.help);
    }
}

bool isControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

}  // namespace

std::int32_t TerminalWindow::showMainWindow() {
    addCommands();
    return 0;
}

void TerminalWindow::addCommands() {
    auto table = service<CommandTable>(kCommandTableKey);
    table->add({"HELP", "", "lists the commands", [](const auto&) { showHelp(); }});
    table->add({"QUIT", "", "ends the application", [this](const auto&) { quit(); }});
    addInspectCommands(*table);
    addFindCommand(*table);
    addFontsCommand(*table);
    addMessageCommand(*table);
}

void TerminalWindow::print(const OdAnsiString& line) {
    std::string shown;
    const OdString text = OdUtf8StringToOdString(line);
    for (OdChar character : text.view()) {
        auto codePoint = static_cast<char32_t>(character);
        appendUtf8(shown, isControl(codePoint) ? U'?' : codePoint);
    }
    std::cout << shown << std::endl;
}

void TerminalWindow::runCommandLoop() {
    bool person = isatty(STDIN_FILENO) != 0;
    LineReader lines(std::cin, kMaxCommand);
    std::string line;
    while (!quitting) {
        if (person) {
            std::cout << "Command: " << std::flush;
        }
        LineReader::Result result = lines.next(line);
        if (result == LineReader::kEnd) {
            // The prompt's line is still open.
            std::cout << (person ? "\n" : "") << std::flush;
            break;
        }
        if (result == LineReader::kTooLong) {
            print("That line is too long.");
        } else if (!trimmed(line).empty()) {
            if (!person) {
                print("> " + line);
            }
            post(line);
        }
    }
}

void TerminalWindow::post(const std::string& line) {
    vosi::VosiInputRecord record;
    record.inputKind = kTyped;
    record.inputNode = commandNode(line);
    service<vosi::VosiInputQueue>(vosi::kInputQueueKey)
        ->postInput(InputRunner::kFromKeyboard, InputRunner::kAsCommand, record);
    service<vosi::VosiDocMgrSvr>(vosi::kDocMgrKey)->pumpInput();
}

}  // namespace vemoapp
