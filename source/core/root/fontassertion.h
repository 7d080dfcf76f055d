// Reports of malformed font files.
#pragma once

#include <drawing/runtime.h>

namespace vosi {

/// Reports the assertion the first time that it is reached; `reported` is the place's own flag.
/// Which malformations a system's fonts have is worth one line each, not one a file.
inline void assertOnce(bool& reported, const char* expression, int line) {
    if (!reported) {
        reported = true;
        OdAssert(expression, "../../../source/core/root/voapfontsread", line);
    }
}

}  // namespace vosi
