#include "autotestservice.h"

#include <core/voexports.h>
#include <utils/paths.h>

#include "commandnode.h"
#include "say.h"
#include "scriptfile.h"

namespace vemoapp {

bool ScriptReader::readRecord(vosi::VosiInputRecord& record) {
    if (atEnd()) {
        return false;
    }
    record.inputNode = commandNode(commands[index]);
    return true;
}

void AutoTestService::setRecordFile(OdAnsiString& path) {
    recordFile = vosiutEvaluatePath(path, vo_sys_config(""));
}

void AutoTestService::startRecording() {
    recording = std::ofstream(recordFile.str(), std::ios::binary | std::ios::trunc);
    recording << kScriptHeading << '\n' << std::flush;
    say((recording ? "Recording to " : "Can't record to ") + recordFile.str());
}

bool AutoTestService::loadScript(OdAnsiString& path) {
    script.release();
    std::ifstream stream(path.str(), std::ios::binary);
    auto commands = voutIsExistFile(path) ? readScript(stream) : std::nullopt;
    if (!commands) {
        return true;
    }
    script = OdRxObjectImpl<ScriptReader>::createObject();
    script->setCommands(*commands);
    return false;
}

void AutoTestService::recordCommand(const std::string& line) {
    if (recording.is_open()) {
        recording << line << '\n' << std::flush;
    }
}

}  // namespace vemoapp
