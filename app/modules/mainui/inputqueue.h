// The input queue: commands wait here until the document manager has them run.
#pragma once

#include <deque>

#include <app/inputrunner.h>

namespace vemoapp {

class InputQueue : public InputRunner {
  public:
    void postInput(int source, int mode, vosi::VosiInputRecord& record) override;
    void runPending() override;

  private:
    std::deque<vosi::VosiInputRecord> pending;
};

}  // namespace vemoapp
