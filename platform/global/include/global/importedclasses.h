// Classes that modules derive theirs from, and the dialog layer's start and end.
//
// Each class has a run-time class (desc, rxInit, rxUninit). A parent is initialised before its
// children and ended after them; OdRxModule's is there while the drawing runtime is up. All of this
// happens on the interface thread.
#pragma once

#include <drawing/runtime.h>

#include "global/export.h"

namespace vosi {

/// A view of a drawing, as the main window shows it.
class GLOBAL_EXPORT VosiApView : public OdRxObject {
    ODRX_DECLARE_MEMBERS(VosiApView)
};

/// Protocol extension: what can be done with an object that floats over the drawing.
class GLOBAL_EXPORT VosiGsFloatObjectActionPE : public OdRxObject {
    ODRX_DECLARE_MEMBERS(VosiGsFloatObjectActionPE)
};

/// A request for input.
class GLOBAL_EXPORT VosiRequest : public OdRxObject {
    ODRX_DECLARE_MEMBERS(VosiRequest)
};

/// A request that a running command makes; its children say for what.
class GLOBAL_EXPORT VosiSubCommandRequest : public VosiRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandRequest)
};

class GLOBAL_EXPORT VosiSubCommandPointRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandPointRequest)
};

class GLOBAL_EXPORT VosiSubCommandAngleRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandAngleRequest)
};

class GLOBAL_EXPORT VosiSubCommandDistRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandDistRequest)
};

class GLOBAL_EXPORT VosiSubCommandEntselRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandEntselRequest)
};

class GLOBAL_EXPORT VosiSubCommandStringRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandStringRequest)
};

class GLOBAL_EXPORT VosiSubCommandKeywordRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandKeywordRequest)
};

class GLOBAL_EXPORT VosiSubCommandIntRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandIntRequest)
};

class GLOBAL_EXPORT VosiSubCommandRealRequest : public VosiSubCommandRequest {
    ODRX_DECLARE_MEMBERS(VosiSubCommandRealRequest)
};

/// What an application module contains.
class GLOBAL_EXPORT HdiRxModule : public OdRxModule {
    ODRX_DECLARE_MEMBERS(HdiRxModule)
};

/// Starts the dialog layer: modules may show dialogs from now on. Starts are counted, and each
/// needs an end of its own.
GLOBAL_EXPORT void core_ui_dlg_initialize();

/// Ends the dialog layer when it was called as often as the start. Without a start it does nothing,
/// so that a start-up that stopped half-way can be taken down.
GLOBAL_EXPORT void core_ui_dlg_uninitialize();

/// Whether the dialog layer is up; a module asks before it shows a dialog.
GLOBAL_EXPORT bool core_ui_dlg_is_initialized();

}  // namespace vosi
