// What happens to search paths and fonts at the application's events.
#pragma once

#include "core/vosiaprxevent.h"

namespace vosi {

class VoApFontsService;

/// Owned by the event dispatcher, from the font service's construction to the end of the
/// application; never taken out of it.
class VosiConfigReactor : public VosiApRxEventReactor {
  public:
    /// Builds the path lists, fills a new user's folders, chooses the default template and has the
    /// fonts scanned. Raises what the scan raises.
    void onMainWindowReady() override;
    /// Takes the fonts out of the Runtime tree.
    void onAppExiting() override;
    /// Shows the fonts in the Runtime tree.
    void onSysConfigLoaded() override;

    /// Without a reference: the service goes after the last event. May be null.
    VoApFontsService* fontService = nullptr;
};

}  // namespace vosi
