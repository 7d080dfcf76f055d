// The dispatcher of application events.
#pragma once

#include "core/vosiaprxevent.h"

namespace vosi {

class VosiApRxEventImpl : public VosiApRxEvent {
  public:
    void addReactor(VosiApRxEventReactor* reactor) override;
    void removeReactor(VosiApRxEventReactor* reactor) override;
    void fireSysConfigLoaded() override;
    void fireUserConfigLoaded() override;
    void fireMainWindowReady() override;
    void fireAppStarted() override;
    void fireAppExiting() override;

  private:
    void fire(void (VosiApRxEventReactor::*operation)()) const;

    OdArray<OdRxObjectPtr> reactors;  // in order of addition, none twice
};

}  // namespace vosi
