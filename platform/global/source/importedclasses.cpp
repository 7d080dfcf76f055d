#include "global/importedclasses.h"

namespace vosi {

namespace {

int dialogLayerStarts = 0;

}  // namespace

#define VOSI_DEFINE_CLASS(ClassName, Parent) \
    ODRX_DEFINE_MEMBERS(ClassName, Parent, nullptr, L## #ClassName)

VOSI_DEFINE_CLASS(VosiApView, OdRxObject)
VOSI_DEFINE_CLASS(VosiGsFloatObjectActionPE, OdRxObject)
VOSI_DEFINE_CLASS(VosiRequest, OdRxObject)
VOSI_DEFINE_CLASS(VosiSubCommandRequest, VosiRequest)
VOSI_DEFINE_CLASS(VosiSubCommandPointRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(VosiSubCommandAngleRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(VosiSubCommandDistRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(VosiSubCommandEntselRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(VosiSubCommandStringRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(VosiSubCommandKeywordRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(VosiSubCommandIntRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(VosiSubCommandRealRequest, VosiSubCommandRequest)
VOSI_DEFINE_CLASS(HdiRxModule, OdRxModule)

void core_ui_dlg_initialize() {
    ++dialogLayerStarts;
}

void core_ui_dlg_uninitialize() {
    if (dialogLayerStarts > 0) {
        --dialogLayerStarts;
    }
}

bool core_ui_dlg_is_initialized() {
    return dialogLayerStarts > 0;
}

}  // namespace vosi
