// A module whose threads write to the log, all at once: 8000 lines.
#include <global/log.h>

#include <thread>
#include <vector>

#include "testmodule.h"

namespace {

void writeLines() {
    for (int line = 1; line <= 2000; ++line) {
        vo_Log(5, line, "chatter", "initApp", "one of many lines");
    }
}

class Chatter : public NotingModule {
  public:
    void initApp() override {
        NotingModule::initApp();
        std::vector<std::thread> threads(4);
        for (std::thread& thread : threads) {
            thread = std::thread(writeLines);
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Chatter)
