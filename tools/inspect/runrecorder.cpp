#include "runrecorder.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <utility>

#include <global/log.h>

#include "core/voexports.h"
#include "jsontext.h"
#include "objectorigin.h"
#include "runstate.h"
#include "treehelpers.h"
#include "voappservice.h"

namespace inspect {

namespace {

// The step of vemo_exit at which every module is gone and the services are about to go.
constexpr const char* kLastStep = "services";

// Lines come on any thread, also on one that began to tell a line when the listener went.
std::mutex logMutex;
RunRecord* recordOfLog = nullptr;

void takeLogLine(const VoLogLine& line) {
    const char* unit = line.file ? line.file : "";
    const char* slash = std::strrchr(unit, '/');
    const std::lock_guard lock(logMutex);
    if (recordOfLog) {
        recordOfLog->log.push_back({line.level, slash ? slash + 1 : unit, line.line,
                                    line.function ? line.function : "",
                                    line.text ? line.text : ""});
    }
}

void takeLogTo(RunRecord* record) {
    vo_set_log_listener(record ? takeLogLine : nullptr);
    const std::lock_guard lock(logMutex);
    recordOfLog = record;
}

std::string utf8(const OdString& text) {
    return OdStringToUtf8String(text).str();
}

// Told at once: folders of the run may be gone after it.
std::string whyPassedOver(const std::string& place, const OdString& found) {
    if (!found.isEmpty()) {
        return "found";
    }
    // Folders hold a separator, rules are words.
    if (place.find('/') == std::string::npos) {
        return "nothing there";
    }
    return std::filesystem::is_directory(place) ? "no such file in it" : "the folder isn't there";
}

/// The members of an object but one, as a new object.
VoJsonPtr without(const VoJsonPtr& object, const char* left) {
    VoJsonPtr rest = tree::newObject();
    for (int index = 0; index < object->propertyCount(); ++index) {
        OdAnsiString key;
        const VoJsonPtr member = object->propertyAt(index, key);
        if (!(key == left)) {
            rest->set_propertyJ(key, member);
        }
    }
    return rest;
}

// "Fonts" is made anew at each reading, has nothing of the run in it and is long.
std::string treeWithoutFonts(const VoJsonPtr& root) {
    if (!root) {
        return "null";
    }
    const VoJsonPtr copy = without(root, "Runtime");
    if (const VoJsonPtr runtime = root->getProperty("Runtime")) {
        copy->set_propertyJ("Runtime",
                            tree::isObject(runtime) ? without(runtime, "Fonts") : runtime);
    }
    return jsonOf(copy);
}

}  // namespace

RunRecorder::RunRecorder(RunRecord& target) : record(target) {
    takeLogTo(&record);
    run::addObserver(*this);
}

RunRecorder::~RunRecorder() {
    run::removeObserver(*this);
    takeLogTo(nullptr);
}

double RunRecorder::sinceStart(Clock::time_point time) const {
    return std::chrono::duration<double, std::milli>(time - start).count();
}

void RunRecorder::takeState() {
    record.startedAfter = sinceStart(Clock::now());
    record.tree = treeWithoutFonts(vo_sys_config(""));
    if (!g_appService) {
        return;
    }
    service = g_appService;
    takeConfiguration();
    record.paths = pathListsOf(vo_runtime_config("paths"));
    record.fonts = fontListsOf(vo_runtime_config("Fonts"));
    takeServices();
}

void RunRecorder::takeConfiguration() {
    record.systemPath = service->systemConfigPath().str();
    record.userPath = service->userFilePath().str();
    record.userTree = jsonOf(service->userTree());
    record.core = jsonOf(vo_sys_config("Core"));
    takeOrigin();
}

void RunRecorder::takeServices() {
    const OdRxDictionaryPtr dictionary = service->arbitraryDictionary();
    if (dictionary.isNull()) {
        return;
    }
    const OdStringArray keys = dictionary->keys();
    for (const OdString& key : keys) {
        const OdRxObjectPtr object = dictionary->getAt(key);
        record.services.push_back({utf8(key), classOf(*object), fileOf(*object)});
    }
}

void RunRecorder::takeOrigin() {
    const std::map<std::string, std::string> told = std::move(record.origin);
    record.origin.clear();
    const VoJsonPtr settings = vo_sys_config("User");
    if (!tree::isObject(settings)) {
        return;
    }
    // What was taken from a file may have been replaced since, and what a module or the library
    // itself added is in neither file.
    for (int index = 0; index < settings->propertyCount(); ++index) {
        OdAnsiString key;
        const VoJsonPtr value = settings->propertyAt(index, key);
        record.user.push_back({key.str(), jsonOf(value)});
        const auto source = told.find(key.str());
        record.origin[key.str()] = source == told.end() ? "run" : source->second;
    }
}

void RunRecorder::spanBegan(run::SpanKind kind, const OdAnsiString& name) {
    if (kind == run::SpanKind::kModuleLoad) {
        record.modules.emplace_back().asked = name.str();
    } else if (service && name == kLastStep) {
        takeServicesLeft();
    }
    OpenSpan span{kind, {}, Clock::now(), record.modules.size() - 1};
    span.step.began = sinceStart(span.began);
    span.step.name = (kind == run::SpanKind::kModuleEnd ? "end of " : "") + name.str();
    open.push_back(std::move(span));
}

void RunRecorder::spanEnded(bool raised) {
    if (open.empty()) {
        return;
    }
    OpenSpan span = std::move(open.back());
    open.pop_back();
    span.step.milliseconds =
        std::chrono::duration<double, std::milli>(Clock::now() - span.began).count();
    span.step.raised = raised;
    if (span.kind == run::SpanKind::kModuleLoad) {
        endLoad(std::move(span));
        return;
    }
    (open.empty() ? record.steps : open.back().step.steps).push_back(std::move(span.step));
}

// Modules have a list of their own; the span around a load names it.
void RunRecorder::endLoad(OpenSpan&& load) {
    ModuleRecord& module = record.modules[load.module];
    module.began = load.step.began;
    module.milliseconds = load.step.milliseconds;
    module.did = std::move(load.step.did);
    module.steps = std::move(load.step.steps);
    if (!module.loaded) {
        takeFailure(module);
    }
    if (!open.empty()) {
        open.back().step.did.push_back((module.loaded ? "loaded " : "couldn't load ") +
                                       module.asked);
    }
}

void RunRecorder::noted(const OdAnsiString& text) {
    if (!open.empty()) {
        open.back().step.did.push_back(text.str());
    }
}

void RunRecorder::moduleAnswered(const OdString& /*asked*/, OdRxModule* module) {
    if (module && !open.empty() && open.back().kind == run::SpanKind::kModuleLoad) {
        ModuleRecord& loaded = record.modules[open.back().module];
        loaded.loaded = true;
        loaded.file = fileOf(*module);
    }
}

// The linker keeps the words of whoever failed: the system's loader, or the module itself.
void RunRecorder::takeFailure(ModuleRecord& module) {
    const OdArray<OdRxModuleFailure> failures = odrxDynamicLinker()->failures();
    for (const OdRxModuleFailure& failure : failures) {
        const std::string name = utf8(failure.moduleName);
        if (module.asked == name || module.asked.ends_with("/" + name)) {
            module.reason = utf8(failure.reason);
        }
    }
}

void RunRecorder::settingTaken(const OdAnsiString& key, bool fromUserFile) {
    record.origin[key.str()] = fromUserFile ? "user file" : "system file";
}

void RunRecorder::placeTried(const OdAnsiString& place, const OdString& found) {
    if (tried) {
        tried->push_back({place.str(), utf8(found), whyPassedOver(place.str(), found)});
    }
}

void RunRecorder::searched(run::SearchKind kind, const OdString& wanted, int detail,
                           const OdString& answer) {
    const std::string as = askedAs(kind, detail);
    if (as.empty()) {
        return;
    }
    FontSearch& search =
        addSearch({utf8(wanted), as, kind == run::SearchKind::kSubstitute, utf8(answer)});
    const std::optional<std::size_t> face = std::exchange(lostFace, std::nullopt);
    if (kind == run::SearchKind::kFace && answer.isEmpty()) {
        lostFace = static_cast<std::size_t>(&search - record.fontSearches.data());
    } else if (face && kind == run::SearchKind::kFile &&
               detail == OdDbBaseHostAppServices::kTrueTypeFontFile) {
        ++search.timesForFace;
        std::vector<std::string>& files = record.fontSearches[*face].filesNext;
        if (std::find(files.begin(), files.end(), search.wanted) == files.end()) {
            files.push_back(search.wanted);
        }
        // A name with folders is often tried without them next.
        lostFace = answer.isEmpty() ? face : std::nullopt;
    }
}

FontSearch& RunRecorder::addSearch(FontSearch&& search) {
    for (FontSearch& known : record.fontSearches) {
        if (known.wanted == search.wanted && known.as == search.as &&
            known.answer == search.answer) {
            ++known.times;
            return known;
        }
    }
    return record.fontSearches.emplace_back(std::move(search));
}

void RunRecorder::takeServicesLeft() {
    const OdRxDictionaryPtr dictionary = service->arbitraryDictionary();
    if (dictionary.isNull()) {
        return;
    }
    const OdStringArray keys = dictionary->keys();
    for (const OdString& key : keys) {
        const std::string file = fileOf(*dictionary->getAt(key));
        for (ModuleRecord& module : record.modules) {
            if (module.loaded && module.file == file) {
                module.left.push_back(utf8(key));
                break;
            }
        }
    }
}

}  // namespace inspect
