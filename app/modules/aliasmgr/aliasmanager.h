// The alias manager.
#pragma once

#include <app/aliasresolver.h>

#include "aliasfile.h"

namespace vemoapp {

/// Finds a relative alias file through the host services and else beside the executable. What is
/// wrong with the file is said to the user and ends nothing.
class AliasManager : public AliasResolver {
  public:
    void setAliasFile(const OdString& name) override { fileName = name; }
    void loadAliases() override;
    std::string resolve(const std::string& word) const override;

  private:
    OdString fileName;
    AliasTable table;
};

}  // namespace vemoapp
