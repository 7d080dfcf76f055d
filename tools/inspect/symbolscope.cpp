#include "symbolscope.h"

#include <cxxabi.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace inspect {

namespace {

bool programDefines(const OdRxModuleSymbol& symbol) {
    return symbol.version.isEmpty() ? dlsym(RTLD_DEFAULT, symbol.name) != nullptr
                                    : dlvsym(RTLD_DEFAULT, symbol.name, symbol.version) != nullptr;
}

}  // namespace

void SymbolScope::add(const OdRxModuleFileInfo& library) {
    for (const OdRxModuleSymbol& symbol : library.defined) {
        definitions[symbol.name.str()].push_back(symbol.version.str());
    }
}

bool SymbolScope::defines(const OdRxModuleSymbol& wanted) const {
    if (const auto found = definitions.find(wanted.name.str()); found != definitions.end()) {
        const std::vector<std::string>& versions = found->second;
        if (wanted.version.isEmpty() ||
            std::any_of(versions.begin(), versions.end(), [&](const std::string& version) {
                return version.empty() || version == wanted.version.str();
            })) {
            return true;
        }
    }
    return programDefines(wanted);
}

std::string readableName(const OdRxModuleSymbol& symbol) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> text(
        abi::__cxa_demangle(symbol.name, nullptr, nullptr, &status), std::free);
    std::string name = text ? text.get() : symbol.name.str();
    return symbol.version.isEmpty() ? name : name + "@" + symbol.version.str();
}

}  // namespace inspect
