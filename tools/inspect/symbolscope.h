// The names among which the system's loader looks for what a module uses.
#pragma once

#include <drawing/runtime.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace inspect {

/// The running program's names, and those of the libraries that were added.
class SymbolScope {
  public:
    void add(const OdRxModuleFileInfo& library);

    /// Whether somebody defines the symbol. A definition without a version serves every version.
    bool defines(const OdRxModuleSymbol& wanted) const;

  private:
    // The versions in which a name is defined.
    std::unordered_map<std::string, std::vector<std::string>> definitions;
};

/// The symbol as people know it: a C++ name as it is written in a source, and the version after
/// "@".
std::string readableName(const OdRxModuleSymbol& symbol);

}  // namespace inspect
