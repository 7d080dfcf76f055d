// The user file whose settings were discarded as out of date, while it still is their only copy.
#pragma once

#include <drawing/runtime.h>

/// Interface thread.
class OutdatedUserFile {
  public:
    /// The file's settings were discarded. The version is the file's own.
    void note(const OdAnsiString& discardedFile, int majorVersion, int minorVersion);
    /// Nothing is at stake any more.
    void forget() { file.empty(); }

    /// To be asked before a file is written. Where it is the noted one, its content is first kept
    /// beside it, once: "user.json" of version 1.1 as "user.v1.1.json", with a number behind the
    /// version where other content has that name. False when that failed and the file must not be
    /// written.
    bool keepBefore(const OdAnsiString& writtenFile);

  private:
    OdAnsiString file;  // empty for none
    int major = 0;
    int minor = 0;
};
