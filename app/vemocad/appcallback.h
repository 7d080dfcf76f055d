// What the main program gives to the library: the folders of this desktop, and the place of the
// modules.
#pragma once

#include <core/vomainappcallback.h>

#include "configfiles.h"

namespace vemoapp {

class AppCallback : public VoMainAppCallback {
  public:
    explicit AppCallback(const ConfigFiles& filesOfCommandLine) : files(filesOfCommandLine) {}

    /// Names the module folder to the linker, and begins to show the stages of the run. Leaves in
    /// Runtime/configFiles where the two configuration files are.
    void initialize() override;
    void uninitialize() override {}

    /// The folder is made when it isn't there.
    OdAnsiString queryAppDataPath() override;
    OdAnsiString querySysFontPath() override { return "/usr/share/fonts"; }
    OdAnsiString queryTempPath() override;
    OdAnsiString queryDocumentPath() override;

  private:
    void publishConfigFiles(const OdAnsiString& exeFolder);

    ConfigFiles files;
};

}  // namespace vemoapp
