// Functions that the drawing runtime calls back from the moment they are installed. They stay for
// the life of the process.
#pragma once

#include <drawing/runtime.h>

/// Takes the runtime's trace, and drops it: it goes nowhere, by design. Null is allowed. Any
/// thread.
void odaTraceHook(const wchar_t* message);

/// Takes errors of the geometry library, so that they neither abort nor raise. Any thread.
void geometryErrorHook(OdResult code);
