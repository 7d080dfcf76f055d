#include "drawing/rxmodule.h"

ODRX_DEFINE_MEMBERS(OdRxModule, OdRxObject, nullptr, L"OdRxModule")
