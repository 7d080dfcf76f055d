#include "startuptrace.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "rootlog.h"
#include "runobserver.h"
#include "treehelpers.h"

namespace {

class TraceWriter : public run::Observer {
  public:
    explicit TraceWriter(std::FILE* openFile) : file(openFile) { std::fputs("[", file); }
    ~TraceWriter() override {
        std::fputs("\n]\n", file);
        std::fclose(file);
    }
    TraceWriter(const TraceWriter&) = delete;
    TraceWriter& operator=(const TraceWriter&) = delete;

    void spanBegan(run::SpanKind kind, const OdAnsiString& name) override {
        const VoJsonPtr event = newEvent("B");
        event->set_propertys("name", name, false);
        event->set_propertys("cat", kind == run::SpanKind::kStep ? "step" : "module", false);
        write(event);
    }
    void spanEnded(bool raised) override {
        const VoJsonPtr event = newEvent("E");
        if (raised) {
            event->set_propertyJ("args", argument("outcome", "an exception ended it"));
        }
        write(event);
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
    static VoJsonPtr argument(const char* key, const char* text) {
        VoJsonPtr arguments = tree::newObject();
        arguments->set_propertys(key, text, false);
        return arguments;
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
