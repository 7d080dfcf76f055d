// The auto-test service: records commands into a script and plays scripts back.
#pragma once

#include <fstream>
#include <vector>

#include <app/commandrecorder.h>

namespace vemoapp {

/// A walk over a script's commands as input records.
class ScriptReader : public vosi::VosiScriptReader {
  public:
    void setCommands(const std::vector<std::string>& lines) { commands = lines; }

    void rewind() override { index = 0; }
    void next() override { ++index; }
    bool atEnd() override { return index >= commands.size(); }
    bool readRecord(vosi::VosiInputRecord& record) override;

  private:
    std::vector<std::string> commands;
    std::size_t index = 0;
};

/// Each command is in the file before it runs, so that a script shows what the application was
/// doing when it died.
class AutoTestService : public CommandRecorder {
  public:
    /// The path may hold the configuration's path variables.
    void setRecordFile(OdAnsiString& path) override;
    void startRecording() override;
    bool loadScript(OdAnsiString& path) override;
    OdSmartPtr<vosi::VosiScriptReader> scriptReader() override { return script; }
    void recordCommand(const std::string& line) override;

  private:
    OdAnsiString recordFile;
    std::ofstream recording;
    OdSmartPtr<ScriptReader> script;
};

}  // namespace vemoapp
