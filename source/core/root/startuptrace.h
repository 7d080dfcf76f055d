// The trace of a run: with VEMO_STARTUP_TRACE in the environment, its steps and module loads go
// into the file that the variable names, in the JSON array form of the Trace Event Format, which
// trace viewers open. Each event is written as it comes, so that a run that dies leaves what it
// did.
#pragma once

class StartupTrace {
  public:
    /// A file that can't be written costs a line in the log.
    static void beginIfAsked();
    /// Nothing when no trace is being written.
    static void end();

    /// Ends the trace at the end of its scope, behind everything that stands after it.
    struct End {
        ~End() { end(); }
    };
};
