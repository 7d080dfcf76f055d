// The dispatcher of application events.
#pragma once

#include <optional>

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
    std::optional<unsigned int> indexOf(const VosiApRxEventReactor* reactor) const;
    void fire(void (VosiApRxEventReactor::*operation)()) const;

    OdArray<OdRxObjectPtr> reactors;  // in order of addition, none twice
};

}  // namespace vosi
