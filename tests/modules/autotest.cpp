// The record and playback service with the input queue. Its script has three records, of which the
// second can't be read. Settings: "script", which is "bad" or "no reader"; "records", their number.
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "testmodule.h"

namespace {

using vosi::VosiInputRecord;

class Reader : public vosi::VosiScriptReader {
  public:
    void rewind() override { place = 0; }
    void next() override { ++place; }
    bool atEnd() override { return place >= journal::numberSetting("records", 3); }
    bool readRecord(VosiInputRecord& record) override {
        const bool clean = record.inputWord == 0 && record.inputCode == 0 && record.inputKind == 0;
        note("readRecord " + std::to_string(place) + (clean ? "" : " into a used record") +
             (record.inputNode ? " with node" : ""));
        // Also when nothing was read, the library has to clear what it finds here.
        record.inputWord = static_cast<std::uintptr_t>(place) + 10;
        record.inputCode = static_cast<std::uint32_t>(place) + 20;
        record.inputKind = 77;
        record.inputNode = vo_runtime_config("");
        return place != 1;
    }

  private:
    int place = -1;
};

class AutoTest : public vosi::VosiAutoTestSvr {
  public:
    void setRecordFile(OdAnsiString& path) override { note("setRecordFile " + path.str()); }
    void startRecording() override { note("startRecording"); }
    bool loadScript(OdAnsiString& path) override {
        note("loadScript " + path.str());
        return journal::setting("script") == "bad";
    }
    OdSmartPtr<vosi::VosiScriptReader> scriptReader() override {
        if (journal::setting("script") == "no reader") {
            return nullptr;
        }
        return OdRxObjectImpl<Reader>::createObject();
    }
};

class InputQueue : public vosi::VosiInputQueue {
  public:
    void postInput(int source, int mode, VosiInputRecord& record) override {
        note("postInput " + std::to_string(source) + ' ' + std::to_string(mode) + ' ' +
             std::to_string(record.inputWord) + ' ' + std::to_string(record.inputCode) + ' ' +
             std::to_string(record.inputKind));
    }
};

class AutoTestModule : public ServiceModule {
  public:
    void initApp() override {
        ServiceModule::initApp();
        provide<AutoTest>(vosi::kAutoTestKey);
        provide<InputQueue>(vosi::kInputQueueKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(AutoTestModule)
