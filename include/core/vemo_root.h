// The library's two ends: start-up and shut-down of the whole application.
#pragma once

#include "core/vemoexport.h"
#include "core/vomainappcallback.h"

/// Result of vemo_root when no module registered a main window.
inline constexpr int kVemoNoMainWindow = 401;

/// Turns the process into the running application and returns when the first drawing is open; the
/// event loop is the caller's. Mind the order: argv, then argc. `callback` must not be null. The
/// calling thread becomes the interface thread.
///
/// Gives 0, or 401 when nothing is registered under "Vemo/MainUI", or else the main window's own
/// result. For a usage request the usage text is printed and the process ends with status 0. What
/// the runtime, a module, a reactor or the callback raises (OdError, std::bad_alloc) passes
/// through. Whatever the outcome, vemo_exit takes down what was built. After it vemo_root may be
/// called again.
VEMO_EXPORT int vemo_root(char** argv, int argc, VoMainAppCallback* callback);

/// Takes the application down and saves the user's configuration. Called once after vemo_root, on
/// the same thread; `callback` may be null. Gives 0. What a reactor or a module raises passes
/// through, and the later steps don't run.
VEMO_EXPORT int vemo_exit(VoMainAppCallback* callback);
