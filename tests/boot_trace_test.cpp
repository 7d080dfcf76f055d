// The trace of a run, which VEMO_STARTUP_TRACE asks for.
#include <rapidjson/document.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>

#include "boot_support.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

namespace {

struct Event {
    std::string phase;
    std::string name;
    std::string kind;
    std::int64_t microseconds = 0;
};

std::string textOf(const rapidjson::Value& event, const char* key) {
    return event.HasMember(key) ? event[key].GetString() : "";
}

/// The events of a file's content, which must be one array of them.
std::vector<Event> eventsOf(const std::string& content) {
    rapidjson::Document document;
    document.Parse(content.data(), content.size());
    if (document.HasParseError() || !document.IsArray()) {
        ADD_FAILURE() << "no JSON array: " << content;
        return {};
    }
    std::vector<Event> events;
    for (const rapidjson::Value& event : document.GetArray()) {
        events.push_back({textOf(event, "ph"), textOf(event, "name"), textOf(event, "cat"),
                          event["ts"].GetInt64()});
    }
    return events;
}

/// Names of the spans, each behind those in which it lies: "application service/drawing runtime".
/// Spans that aren't closed in order are a failure.
std::vector<std::string> spansOf(const std::vector<Event>& events, const std::string& kind) {
    std::vector<std::string> open{""};
    std::vector<std::string> spans;
    for (const Event& event : events) {
        if (event.phase == "B") {
            open.push_back(open.back() + '/' + event.name);
            if (event.kind == kind) {
                spans.push_back(open.back().substr(1));
            }
        } else if (event.phase == "E") {
            // Viewers match an end to its beginning by name.
            if (!open.back().ends_with('/' + event.name)) {
                ADD_FAILURE() << "the end of " << event.name << " in " << open.back();
                return spans;
            }
            open.pop_back();
        }
    }
    EXPECT_THAT(open, SizeIs(1)) << "a span that never ends";
    return spans;
}

std::vector<std::string> notesOf(const std::vector<Event>& events) {
    std::vector<std::string> notes;
    for (const Event& event : events) {
        if (event.phase == "i") {
            notes.push_back(event.name);
        }
    }
    return notes;
}

class TraceTest : public BootTest {
  protected:
    TraceTest() { setenv("VEMO_STARTUP_TRACE", trace.c_str(), 1); }

    std::string trace = folder.path("trace.json");
};

TEST_F(TraceTest, StepsAndModulesOfAWholeRun) {
    configure({.odaLibrary = R"(["runtime.tx"])", .library = R"(["alpha", "nowhere"])"});
    ASSERT_EQ(boot(), 0);
    ASSERT_EQ(shutDown(), 0);

    const std::vector<Event> events = eventsOf(contentOf(trace));
    const std::vector<std::string> steps = spansOf(events, "step");
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(steps.front(), "memory pool");
    EXPECT_EQ(steps.back(), "services");
    EXPECT_THAT(steps, Contains("application service/drawing runtime"));
    const auto last = std::find(steps.begin(), steps.end(), "insertion units");
    ASSERT_NE(last, steps.end());
    EXPECT_EQ(*(last + 1), "quitting");
    EXPECT_THAT(spansOf(events, "module"),
                ElementsAre("first wave of modules/load of runtime.tx",
                            "first wave of modules/load of libstage.so",
                            "first wave of modules/load of libalpha.so",
                            "first wave of modules/load of libnowhere.so",
                            "fixed modules/end of libalpha.so"));
    EXPECT_THAT(notesOf(events), Contains("libnowhere.so wasn't loaded"));
    EXPECT_THAT(notesOf(events), Contains("created " + userFile()));
    for (std::size_t index = 1; index < events.size(); ++index) {
        EXPECT_GE(events[index].microseconds, events[index - 1].microseconds);
    }
}

TEST_F(TraceTest, TellsWhatAnExceptionEnded) {
    folder.file("fonts/cut.shx", "Drafting86 uni");
    configure({.furtherCore = R"(, "paths": {"fontPaths": [")" + folder.path("fonts") + R"("]})"});
    EXPECT_THROW(boot(), OdError);
    EXPECT_EQ(shutDown(), 0);

    const std::vector<Event> events = eventsOf(contentOf(trace));
    EXPECT_EQ(spansOf(events, "step").back(), "services");
    EXPECT_THAT(notesOf(events), IsSupersetOf({"an exception ended font scan",
                                               "an exception ended main window event"}));
}

TEST_F(TraceTest, AFileThatCannotBeWrittenCostsALineOfTheLog) {
    const std::string nowhere = folder.path("nowhere/trace.json");
    setenv("VEMO_STARTUP_TRACE", nowhere.c_str(), 1);
    ASSERT_EQ(boot(), 0);
    EXPECT_THAT(libraryLog(), ElementsAre("4 vemo_root vemo_root 创建" + nowhere + "文件失败！"));
    EXPECT_EQ(shutDown(), 0);
    EXPECT_THAT(libraryLog(), SizeIs(1));
}

TEST_F(TraceTest, AnEmptyVariableAsksForNothing) {
    setenv("VEMO_STARTUP_TRACE", "", 1);
    ASSERT_EQ(boot(), 0);
    ASSERT_EQ(shutDown(), 0);
    EXPECT_FALSE(std::filesystem::exists(trace));
    EXPECT_THAT(libraryLog(), IsEmpty());
}

TEST_F(TraceTest, ARunThatDiesLeavesWhatItDid) {
    const auto die = [this] {
        bootBare();
        ::_exit(3);
    };
    EXPECT_EXIT(die(), testing::ExitedWithCode(3), "");
    const std::string content = contentOf(trace);
    const std::vector<Event> events = eventsOf(content + "]");
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(spansOf(events, "step").back(), "main window service");
}

TEST_F(TraceTest, TheUsageTextEndsTheArray) {
    const auto askForUsage = [this] {
        expectExit();
        boot({"--help"});
    };
    EXPECT_EXIT(askForUsage(), testing::ExitedWithCode(0), "");
    const std::vector<Event> events = eventsOf(contentOf(trace));
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back().name, "command line");
}

}  // namespace
