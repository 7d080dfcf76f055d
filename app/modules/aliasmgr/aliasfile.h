// Alias files: lines of the form "ALIAS, *COMMAND".
#pragma once

#include <istream>
#include <map>
#include <string>
#include <vector>

namespace vemoapp {

/// What an alias file holds. Names are in upper case; of equal aliases the last wins.
struct AliasTable {
    std::map<std::string, std::string> commands;
    std::vector<std::string> errors;  // "line N: MESSAGE" for each line that was left out
};

/// Reads alias lines; empty lines and what follows a ";" are comments.
AliasTable readAliases(std::istream& stream);

}  // namespace vemoapp
