// The input queue as the document manager drives it.
#pragma once

#include <core/vomoduleservices.h>

namespace vemoapp {

/// "App/InputRunner", and under "Core/InputQueue" as the library knows it. A record's `inputNode`
/// is a text node with one command line.
class InputRunner : public vosi::VosiInputQueue {
  public:
    // What a person types is posted with these two.
    static constexpr int kFromKeyboard = 1;
    static constexpr int kAsCommand = 2;

    /// Runs the records in the order in which they were posted until none is left; what a command
    /// posts is run too.
    virtual void runPending() = 0;
};

}  // namespace vemoapp
