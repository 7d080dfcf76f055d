// The runtime's start and end, and its process-wide hooks.
#pragma once

#include "drawing/odresult.h"
#include "drawing/rxsystemservices.h"

/// Starts the runtime on the given services, which must outlive it: classes, registries and the
/// linker are there afterwards. Starting it twice raises OdError (eInvalidInput). Call it and
/// odUninitialize on the interface thread.
DRAWING_EXPORT void odInitialize(OdRxSystemServices* services);

/// Ends the runtime: every module that is still loaded ends, last loaded first, then the registries
/// and classes go; odInitialize may follow. What the first failing uninitApp raised is raised once
/// all is done. Raises OdError (eNotInitializedYet) when the runtime isn't up.
DRAWING_EXPORT void odUninitialize();

using OdTraceFunc = void (*)(const wchar_t* message);

/// Sets where the runtime's trace goes, null for nowhere; allowed before odInitialize.
DRAWING_EXPORT void odSetTraceFunc(OdTraceFunc sink);

/// Sends one message to the trace.
DRAWING_EXPORT void odTrace(const OdString& message);

/// The geometry library's context.
class DRAWING_EXPORT OdGeContext {
  public:
    /// Called by the geometry library on an error; writable.
    static void (*gErrorFunc)(OdResult code);
};

/// Key of the runtime's dictionary of system variables in the system registry.
#define ODDB_SYSVARDICT L"ODDB_SYSVARDICT"
