// The application's log. Levels are 1 to 5; a higher one is more urgent.
//
// A line is "TIME LEVEL UNIT:LINE FUNCTION TEXT". It goes to standard error, and to a file where
// one is named and turned on; a file that grows beyond its limit is renamed to NAME.1 and begun
// anew. Any thread may write; the settings are made on one thread.
#pragma once

#include <drawing/runtime.h>

#include "global/export.h"

/// The threshold: a line of level L is made only if the threshold is at or below L. 4 at first.
GLOBAL_EXPORT int vemo_log_level();

/// Writes one line, whatever the threshold. `file` is the source's path without extension; line
/// feeds in the text are shown as "\n", so that a message stays one line.
GLOBAL_EXPORT void vo_Log(int level, int line, const char* file, const char* function,
                          const char* text);

/// Sets the threshold; outside 1 to 5 the nearest of them is taken.
GLOBAL_EXPORT void vo_set_print_log_level(int level);

/// Turns the output to the log file on or off; it is off at first.
GLOBAL_EXPORT void vo_set_print_log_to_file(bool on);

/// Names the log file, UTF-8. It is opened, for appending, at the first line that goes to it; while
/// it can't be opened lines go to standard error alone.
GLOBAL_EXPORT void vo_set_Log_file(const OdAnsiString& path);

/// One line of the log in its parts, as its writer gave them.
struct VoLogLine {
    int level;
    int line;
    const char* file;
    const char* function;
    const char* text;
};

/// Has each line told to `listener` too, on the thread that writes it, before it goes out; null
/// ends that. For tools; the listener must not write to the log.
GLOBAL_EXPORT void vo_set_log_listener(void (*listener)(const VoLogLine&));
