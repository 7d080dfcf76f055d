#include "aliasmanager.h"

#include <fstream>

#include <core/voexports.h>
#include <utils/paths.h>

#include "findfile.h"
#include "say.h"
#include "text.h"

namespace vemoapp {

namespace {

constexpr std::size_t kShownErrors = 3;

std::string pathOf(const OdString& fileName) {
    OdString found = findFile(fileName);
    if (!found.isEmpty()) {
        return OdStringToUtf8String(found).str();
    }
    VoJsonPtr folder = vo_runtime_config("ExeRootPath");
    return voutCombinePath(folder ? folder->strValue() : OdAnsiString(),
                           OdStringToUtf8String(fileName))
        .str();
}

}  // namespace

void AliasManager::loadAliases() {
    std::string path = pathOf(fileName);
    if (!voutIsExistFile(path)) {
        say("No alias file " + path + "; commands have their full names only.");
        return;
    }
    std::ifstream stream(path, std::ios::binary);
    table = readAliases(stream);
    if (!table.errors.empty()) {
        say(path + ": " + joined(table.errors, "; ", kShownErrors));
    }
}

std::string AliasManager::resolve(const std::string& word) const {
    std::string name = upperCase(word);
    auto found = table.commands.find(name);
    return found == table.commands.end() ? name : found->second;
}

}  // namespace vemoapp
