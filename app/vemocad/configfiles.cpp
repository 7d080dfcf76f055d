#include "configfiles.h"

#include <core/vocommandline.h>

namespace vemoapp {

ConfigFiles configFilesOf(const std::vector<char*>& arguments) {
    // getopt_long reorders what it reads.
    std::vector<char*> copy = arguments;
    int count = static_cast<int>(copy.size());
    copy.push_back(nullptr);
    ConfigFiles files;
    optind = 0;
    opterr = 0;
    for (int found = 0; found != -1;) {
        found = getopt_long(count, copy.data(), vemo::kShortOptions, vemo::kLongOptions, nullptr);
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
