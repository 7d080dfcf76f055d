// The library up in a measuring program: booted bare, without modules, in a folder of its own.
#pragma once

#include <memory>

#include "core/vemo_root.h"
#include "support/testfolder.h"

/// vemo_root with empty lists of modules, which ends before the main window; vemo_exit at the end.
/// The services of the library are up in between. One at a time.
class BareApplication : private VoMainAppCallback {
  public:
    /// Raises std::runtime_error when the library doesn't come up.
    BareApplication();
    BareApplication(const BareApplication&) = delete;
    BareApplication& operator=(const BareApplication&) = delete;
    virtual ~BareApplication();

    const TestFolder& folder() const { return home; }

  private:
    void initialize() override {}
    void uninitialize() override {}
    OdAnsiString queryAppDataPath() override { return home.folder("data"); }
    OdAnsiString querySysFontPath() override { return home.folder("fonts"); }
    OdAnsiString queryTempPath() override { return home.folder("temp"); }
    OdAnsiString queryDocumentPath() override { return home.folder("documents"); }

    TestFolder home;
};

/// Sets the environment so that everything that the application takes from the user's and the
/// system's places comes from the folder, and that no locale has files to be read.
void liveIn(const TestFolder& folder);
