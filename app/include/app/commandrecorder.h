// Recording of commands as the input queue feeds it.
#pragma once

#include <string>

#include <core/vomoduleservices.h>

namespace vemoapp {

/// "App/Recorder", and under "Core/AutoTestSvr" as the library knows it.
class CommandRecorder : public vosi::VosiAutoTestSvr {
  public:
    /// Appends a command to the script that is being recorded; nothing while none is.
    virtual void recordCommand(const std::string& line) = 0;
};

}  // namespace vemoapp
