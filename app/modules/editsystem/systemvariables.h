// System variables: 16-bit integers by name.
#pragma once

#include <map>
#include <string>

#include <core/vomoduleservices.h>

namespace vemoapp {

/// "Core/EditSystemServer". Names are compared without regard to case; a name that is no variable
/// raises OdError_InvalidKey. Values last as long as the application runs.
class SystemVariables : public vosi::VosiEditSystemSvr {
  public:
    /// Every variable with its first value; MEASUREINIT comes from User/measureInit.
    SystemVariables();

    void setSysVar(const OdString& name, vosi::VosiSysVarValue& value, int mode,
                   int flags) override;
    void getSysVar(const OdString& name, vosi::VosiSysVarValue& value) override;

    /// Adds the command SETVAR.
    void addCommand();

  private:
    std::int16_t& variable(const OdString& name);
    void setVarCommand(const std::vector<std::string>& arguments);

    std::map<std::string, std::int16_t> values;
};

}  // namespace vemoapp
