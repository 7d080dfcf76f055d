// Writes a line into the file that the environment names as soon as any of its code runs.
#include <cstdlib>
#include <fstream>

#include "tracingmodule.h"

namespace {

struct Witness {
    Witness() {
        if (const char* path = std::getenv("DRAWING_TEST_WITNESS")) {
            std::ofstream(path, std::ios::app) << "constructed\n";
        }
    }
};

const Witness witness;

class StampedModule : public TracingModule {
  public:
    StampedModule() : TracingModule(L"stamped") {}
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(StampedModule)
