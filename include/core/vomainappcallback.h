// What the main program gives to the library.
#pragma once

#include <drawing/runtime.h>

/// Implemented and owned by the main program, which passes it to vemo_root and vemo_exit; the
/// library doesn't keep it. Its six operations are called by their place, so they stand first. All
/// are called on the thread of vemo_root. Paths are UTF-8 and absolute. What an operation raises
/// leaves vemo_root or vemo_exit.
class VoMainAppCallback {
  public:
    /// Called once by vemo_root: the library's own services are registered, no configuration has
    /// been read and no module is loaded.
    virtual void initialize() = 0;
    /// Called once by vemo_exit: the second wave's and the fixed modules are gone, the
    /// configuration and the library's services are still there. Called also when start-up didn't
    /// get as far as initialize; what it hadn't made isn't there then.
    virtual void uninitialize() = 0;

    // The paths are asked for by the command line step, before initialize and each time anew.

    /// Per-user folder of "user.json".
    virtual OdAnsiString queryAppDataPath() = 0;
    /// Folder of the system's fonts.
    virtual OdAnsiString querySysFontPath() = 0;
    virtual OdAnsiString queryTempPath() = 0;
    virtual OdAnsiString queryDocumentPath() = 0;

    virtual ~VoMainAppCallback() = default;
};
