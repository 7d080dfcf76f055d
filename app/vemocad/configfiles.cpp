#include "configfiles.h"

#include <getopt.h>

namespace vemoapp {

namespace {

// The whole line has to be understood, so that an option's argument isn't taken for an option.
constexpr const char* kShortOptions = "d:f:s:c:u:t:pL?";
constexpr option kLongOptions[] = {{"file", required_argument, nullptr, 'f'},
                                   {"debug", required_argument, nullptr, 'd'},
                                   {"script", required_argument, nullptr, 's'},
                                   {"config", required_argument, nullptr, 'c'},
                                   {"userconfig", required_argument, nullptr, 'u'},
                                   {"template", required_argument, nullptr, 't'},
                                   {"print", no_argument, nullptr, 'p'},
                                   {"load", no_argument, nullptr, 'L'},
                                   {"help", no_argument, nullptr, '?'},
                                   {"upgrade", optional_argument, nullptr, 'U'},
                                   {nullptr, 0, nullptr, 0}};

}  // namespace

ConfigFiles configFilesOf(const std::vector<char*>& arguments) {
    // getopt_long reorders what it reads.
    std::vector<char*> copy = arguments;
    int count = static_cast<int>(copy.size());
    copy.push_back(nullptr);
    ConfigFiles files;
    optind = 0;
    opterr = 0;
    for (int found = 0; found != -1;) {
        found = getopt_long(count, copy.data(), kShortOptions, kLongOptions, nullptr);
        if (found == 'c') {
            files.system = optarg;
        } else if (found == 'u') {
            files.user = optarg;
        }
    }
    optind = 0;
    opterr = 1;
    return files;
}

}  // namespace vemoapp
