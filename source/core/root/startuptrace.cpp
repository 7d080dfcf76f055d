#include "startuptrace.h"

#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "rootlog.h"
#include "runobserver.h"
#include "treehelpers.h"

namespace {

class TraceWriter : public run::Observer {
  public:
    explicit TraceWriter(std::FILE* openFile) : file(openFile) {
        std::fputs("[", file);
        nameTrack("process_name", program_invocation_short_name);
        nameTrack("thread_name", "start and end");
    }
    ~TraceWriter() override {
        std::fputs("\n]\n", file);
        std::fclose(file);
    }
    TraceWriter(const TraceWriter&) = delete;
    TraceWriter& operator=(const TraceWriter&) = delete;

    void spanBegan(run::SpanKind kind, const OdAnsiString& name) override {
        open.push_back({shownName(kind, name), kind == run::SpanKind::kStep ? "step" : "module"});
        write(newSpanEvent("B"));
    }
    void spanEnded(bool raised) override {
        if (open.empty()) {
            return;
        }
        // Not as an argument of the end: there are viewers that then take it for another span's.
        if (raised) {
            noted("an exception ended " + open.back().name);
        }
        write(newSpanEvent("E"));
        open.pop_back();
    }
    void noted(const OdAnsiString& text) override {
        const VoJsonPtr event = newEvent("i");
        event->set_propertys("name", text, false);
        event->set_propertys("s", "t", false);
        write(event);
    }
    void moduleAnswered(const OdString& asked, OdRxModule* module) override {
        if (!module) {
            noted(OdStringToUtf8String(asked) + " wasn't loaded");
        }
    }

  private:
    struct OpenSpan {
        OdAnsiString name;
        const char* category;
    };

    static OdAnsiString shownName(run::SpanKind kind, const OdAnsiString& name) {
        switch (kind) {
            case run::SpanKind::kModuleLoad:
                return "load of " + name;
            case run::SpanKind::kModuleEnd:
                return "end of " + name;
            case run::SpanKind::kStep:
                break;
        }
        return name;
    }

    // What a viewer shows instead of the numbers.
    void nameTrack(const char* what, const char* name) {
        const VoJsonPtr event = newEvent("M");
        event->set_propertys("name", what, false);
        const VoJsonPtr arguments = tree::newObject();
        arguments->set_propertys("name", name, false);
        event->set_propertyJ("args", arguments);
        write(event);
    }

    // Of the innermost span. Viewers match an end to its beginning by name.
    VoJsonPtr newSpanEvent(const char* phase) const {
        VoJsonPtr event = newEvent(phase);
        event->set_propertys("name", open.back().name, false);
        event->set_propertys("cat", open.back().category, false);
        return event;
    }

    VoJsonPtr newEvent(const char* phase) const {
        const auto now = std::chrono::steady_clock::now() - start;
        VoJsonPtr event = tree::newObject();
        event->set_propertys("ph", phase, false);
        event->set_propertyL(
            "ts", std::chrono::duration_cast<std::chrono::microseconds>(now).count(), false);
        event->set_propertyI("pid", static_cast<int>(getpid()), false);
        event->set_propertyI("tid", 1, false);
        return event;
    }

    void write(const VoJsonPtr& event) {
        std::fprintf(file, "%s\n%s", isFirst ? "" : ",", event->writeJson().c_str());
        std::fflush(file);
        isFirst = false;
    }

    std::FILE* file;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::vector<OpenSpan> open;
    bool isFirst = true;
};

std::unique_ptr<TraceWriter>& writer() {
    static std::unique_ptr<TraceWriter> only;
    return only;
}

}  // namespace

void StartupTrace::beginIfAsked() {
    const char* path = std::getenv("VEMO_STARTUP_TRACE");
    if (!path || !*path || writer()) {
        return;
    }
    std::FILE* file = std::fopen(path, "we");
    if (!file) {
        rootlog::write(rootlog::kSurvived, __LINE__, rootlog::kVemoRoot, "vemo_root",
                       "创建%s文件失败！", path);
        return;
    }
    writer() = std::make_unique<TraceWriter>(file);
    run::addObserver(*writer());
}

void StartupTrace::end() {
    if (writer()) {
        run::removeObserver(*writer());
        writer().reset();
    }
}
