#include "inputqueue.h"

#include <utility>

#include <app/commandrecorder.h>
#include <app/commandtable.h>
#include <app/services.h>

#include "commandnode.h"
#include "say.h"

namespace vemoapp {

namespace {

void run(const vosi::VosiInputRecord& record) {
    std::string line = commandOf(record.inputNode);
    if (record.inputKind == vosi::VosiInputRecord::kFromScript) {
        say("> " + line);
    }
    if (auto recorder = service<CommandRecorder>(kCommandRecorderKey)) {
        recorder->recordCommand(line);
    }
    if (auto table = service<CommandTable>(kCommandTableKey)) {
        table->runLine(line);
    }
}

}  // namespace

void InputQueue::postInput(int /*source*/, int /*mode*/, vosi::VosiInputRecord& record) {
    pending.push_back(record);
}

void InputQueue::runPending() {
    while (!pending.empty()) {
        vosi::VosiInputRecord record = std::move(pending.front());
        pending.pop_front();
        run(record);
    }
}

}  // namespace vemoapp
