// Shows the stages of a run on standard output, a line each.
#pragma once

#include <core/vosiaprxevent.h>

namespace vemoapp {

/// A reactor for the five events of a run. It has to be added before the first of them.
class StartupStages : public vosi::VosiApRxEventReactor {
  public:
    void onMainWindowReady() override;
    void onAppStarted() override;
    void onAppExiting() override;
    void onSysConfigLoaded() override;
    void onUserConfigLoaded() override;
};

}  // namespace vemoapp
