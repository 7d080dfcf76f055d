#include "terminalpasswords.h"

#include <unistd.h>

#include <iostream>
#include <string>

#include "hiddeninput.h"
#include "linereader.h"
#include "say.h"

namespace vemoapp {

namespace {

constexpr std::size_t kMaxPassword = 1024;

// A password that is cut short would be another one.
bool readPassword(std::string& line) {
    return LineReader(std::cin, kMaxPassword).next(line) == LineReader::kLine && !line.empty();
}

}  // namespace

bool TerminalPasswords::getPassword(const OdString& drawing, bool isXref, OdPassword& password) {
    const HiddenInput hidden(STDIN_FILENO);
    say("Password for " + std::string(isXref ? "the external reference " : "") +
        OdStringToUtf8String(drawing).str() + ":");
    std::string line;
    const bool supplied = readPassword(line);
    if (supplied) {
        password = OdUtf8StringToOdString(line);
    }
    return supplied;
}

}  // namespace vemoapp
