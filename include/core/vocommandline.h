// The options of the main program's command line, as vemo_root reads them: for main programs that
// look at the line themselves. The last entry of the long table is empty, as getopt_long wants it.
#pragma once

#include <getopt.h>

namespace vemo {

inline constexpr const char* kShortOptions = "d:f:s:c:u:t:pL?";

inline constexpr option kLongOptions[] = {
    {"file", required_argument, nullptr, 'f'},
    {"debug", required_argument, nullptr, 'd'},
    {"script", required_argument, nullptr, 's'},
    {"config", required_argument, nullptr, 'c'},
    {"userconfig", required_argument, nullptr, 'u'},
    {"template", required_argument, nullptr, 't'},
    {"print", no_argument, nullptr, 'p'},
    {"load", no_argument, nullptr, 'L'},
    {"help", no_argument, nullptr, '?'},
    {"upgrade", optional_argument, nullptr, 'U'},
    {nullptr, 0, nullptr, 0},
};

}  // namespace vemo
