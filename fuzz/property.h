// What a fuzz target asks of the code under test.
#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the run as a find, with the property's name, when it doesn't hold. The name goes to the
/// standard output, since what the application logs is turned off along with standard error.
inline void requireProperty(bool holds, const char* property) {
    if (!holds) {
        std::printf("Violated: %s\n", property);
        std::fflush(stdout);
        std::abort();
    }
}
