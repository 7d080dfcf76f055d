// Records a run of the library in this process while it lives.
#pragma once

#include <chrono>

#include "runobserver.h"
#include "runrecord.h"

class VoAppService;

namespace inspect {

class RunRecorder : public run::Observer {
  public:
    explicit RunRecorder(RunRecord& target);
    ~RunRecorder() override;
    RunRecorder(const RunRecorder&) = delete;
    RunRecorder& operator=(const RunRecorder&) = delete;

    /// Takes down what stands now that vemo_root has returned.
    void takeState();

    /// While set, the places where files are looked for go there.
    std::vector<TriedPlace>* tried = nullptr;

    void spanBegan(run::SpanKind kind, const OdAnsiString& name) override;
    void spanEnded(bool raised) override;
    void noted(const OdAnsiString& text) override;
    void moduleAnswered(const OdString& asked, OdRxModule* module) override;
    void settingTaken(const OdAnsiString& key, bool fromUserFile) override;
    void placeTried(const OdAnsiString& place, const OdString& found) override;
    void searched(run::SearchKind kind, const OdString& wanted, int detail,
                  const OdString& answer) override;

  private:
    using Clock = std::chrono::steady_clock;

    struct OpenSpan {
        run::SpanKind kind;
        Step step;
        Clock::time_point began;
        std::size_t module;  // of a load, in the record
    };

    double sinceStart(Clock::time_point time) const;
    void takeConfiguration();
    void takeOrigin();
    void takeServices();
    void endLoad(OpenSpan&& load);
    void takeFailure(ModuleRecord& module);
    FontSearch& addSearch(FontSearch&& search);
    void takeServicesLeft();

    RunRecord& record;
    Clock::time_point start = Clock::now();
    std::vector<OpenSpan> open;
    // The face that the search before this one didn't find; its place in the record.
    std::optional<std::size_t> lostFace;
    // Outlives the runtime, and with it the dictionary of services.
    VoAppService* service = nullptr;
};

}  // namespace inspect
