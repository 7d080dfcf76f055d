#include "vemo_root_hooks.h"

void odaTraceHook(const wchar_t* /*message*/) {}

void geometryErrorHook(OdResult /*code*/) {}
