// Command aliases as the command line uses them.
#pragma once

#include <string>

#include <core/vomoduleservices.h>

namespace vemoapp {

/// "App/Aliases", and under "Core/AliasMgrSvr" as the library knows it.
class AliasResolver : public vosi::VosiAliasMgrSvr {
  public:
    /// The command that the word stands for, in upper case; the word itself when it is no alias.
    virtual std::string resolve(const std::string& word) const = 0;
};

}  // namespace vemoapp
