// Sequences of calls of the event dispatcher against a model of who hears what, and when who goes.
//
// A program makes reactors with scripts and calls the dispatcher as modules do; the scripts call it
// again from within handlers and destructors. Library and model follow the same program, each in a
// world of its own, and must have the same to tell.
#include <drawing/runtime.h>

#include <vector>

#include "bytes.h"
#include "core/voservicekeys.h"
#include "property.h"
#include "rootservices.h"
#include "sequence_dispatcher_model.h"
#include "vosiaprxeventimpl.h"

using sequence::Action;
using sequence::Cast;
using sequence::DispatcherModel;
using sequence::Event;
using sequence::kSlots;
using sequence::Script;
using sequence::Verb;
using sequence::World;

namespace {

constexpr std::size_t kMostReactors = 64;  // of one program

class DispatcherLibrary;

class ScriptedReactor : public vosi::VosiApRxEventReactor {
  public:
    ~ScriptedReactor() override;

    OdRxObject* queryX(const OdRxClass* protocolClass) const override {
        return answers ? VosiApRxEventReactor::queryX(protocolClass) : nullptr;
    }
    void onMainWindowReady() override { hear(Event::kMainWindowReady); }
    void onAppStarted() override { hear(Event::kAppStarted); }
    void onAppExiting() override { hear(Event::kAppExiting); }
    void onSysConfigLoaded() override { hear(Event::kSysConfigLoaded); }
    void onUserConfigLoaded() override { hear(Event::kUserConfigLoaded); }

    DispatcherLibrary* world = nullptr;
    int number = 0;
    bool answers = true;

  private:
    void hear(Event event);
};

using ScriptedReactorPtr = OdSmartPtr<ScriptedReactor>;

// The library's own dispatcher, fetched anew for each use.
class DispatcherLibrary : public World {
  public:
    using World::World;

    bool isAlive(int reactor) const override { return at(reactor).isAlive; }
    void add(int reactor) override {
        if (const auto dispatcher = eventDispatcher()) {
            dispatcher->addReactor(at(reactor).object);
        }
    }
    void remove(int reactor) override {
        if (const auto dispatcher = eventDispatcher()) {
            dispatcher->removeReactor(at(reactor).object);
        }
    }
    void fire(Event event) override;
    void release(int reactor) override { reactors[index(reactor)].held.release(); }
    void withdraw() override { odrxSysRegistry()->remove(vosi::kRxEventKey); }
    void install() override {
        if (eventDispatcher().isNull()) {
            odrxSysRegistry()->putAt(vosi::kRxEventKey,
                                     OdRxObjectImpl<vosi::VosiApRxEventImpl>::createObject().get());
        }
    }

    const void* make(bool answers);
    long references(int reactor) const { return at(reactor).object->numRefs(); }
    void went(int reactor) {
        reactors[index(reactor)].isAlive = false;
        end(reactor);
    }

  private:
    struct Reactor {
        ScriptedReactorPtr held;
        ScriptedReactor* object = nullptr;  // stays when the reactor goes
        bool isAlive = true;
    };

    static std::size_t index(int reactor) { return static_cast<std::size_t>(reactor); }
    const Reactor& at(int reactor) const { return reactors[index(reactor)]; }

    std::vector<Reactor> reactors;
};

ScriptedReactor::~ScriptedReactor() {
    world->went(number);
}

void ScriptedReactor::hear(Event event) {
    world->hear(number, event);
}

void DispatcherLibrary::fire(Event event) {
    const auto dispatcher = eventDispatcher();
    if (dispatcher.isNull()) {
        return;
    }
    switch (event) {
        case Event::kSysConfigLoaded:
            return dispatcher->fireSysConfigLoaded();
        case Event::kUserConfigLoaded:
            return dispatcher->fireUserConfigLoaded();
        case Event::kMainWindowReady:
            return dispatcher->fireMainWindowReady();
        case Event::kAppStarted:
            return dispatcher->fireAppStarted();
        case Event::kAppExiting:
            return dispatcher->fireAppExiting();
        case Event::kCount:
            return;
    }
}

const void* DispatcherLibrary::make(bool answers) {
    auto made = OdRxObjectImpl<ScriptedReactor>::createObject();
    made->world = this;
    made->number = static_cast<int>(reactors.size());
    made->answers = answers;
    reactors.push_back({.held = made, .object = made.get()});
    return made.get();
}

class Run {
  public:
    explicit Run(Bytes bytes) : program(bytes) {}

    void play() {
        perform({Verb::kInstall, 0});
        while (!program.atEnd()) {
            // 'i' makes a reactor.
            const std::size_t verb = program.letter(static_cast<std::size_t>(Verb::kCount) + 1);
            if (verb == static_cast<std::size_t>(Verb::kCount)) {
                make(program.digit(kSlots));
            } else {
                perform({static_cast<Verb>(verb), program.digit(kSlots)});
            }
        }
        finish();
    }

  private:
    std::vector<Action> readActions() {
        std::vector<Action> actions(program.digit(4));
        for (Action& action : actions) {
            action.verb = program.choice<Verb>();
            action.object = program.digit(kSlots);
        }
        return actions;
    }

    void make(std::size_t slot) {
        Script script;
        script.onEvent = readActions();
        script.atEnd = readActions();
        script.answers = program.digit(16) != 1;
        if (cast.roles.size() == kMostReactors ||
            (cast.in(slot) >= 0 && model.isHeld(cast.in(slot)))) {
            return;
        }
        cast.slots[slot] = static_cast<int>(cast.roles.size());
        const void* address = library.make(script.answers);
        cast.roles.push_back({std::move(script), address});
        model.make();
    }

    void perform(const Action& action) {
        library.perform(action);
        model.perform(action);
        compare();
    }

    void compare() {
        requireSame(library.journal, model.journal);
        library.journal.clear();
        model.journal.clear();
        for (int reactor = 0; reactor < static_cast<int>(cast.roles.size()); ++reactor) {
            requireProperty(library.isAlive(reactor) == model.isAlive(reactor),
                            "a reactor goes with its last reference");
            requireProperty(
                !model.isAlive(reactor) || library.references(reactor) == model.references(reactor),
                "a reactor has the references that the model counts");
        }
        const auto dispatcher = eventDispatcher();
        requireProperty(dispatcher.isNull() != model.isInstalled(), "the dispatcher is registered");
        requireProperty(dispatcher.isNull() || dispatcher->numRefs() == 2,
                        "the registry alone holds the dispatcher");
    }

    // Reactors may install a dispatcher while they go, and add others to it.
    void finish() {
        for (std::size_t slot = 0; slot < kSlots; ++slot) {
            perform({Verb::kRelease, slot});
        }
        while (model.isInstalled()) {
            perform({Verb::kWithdraw, 0});
        }
        for (int reactor = 0; reactor < static_cast<int>(cast.roles.size()); ++reactor) {
            requireProperty(!library.isAlive(reactor), "nothing is left");
        }
    }

    Bytes program;
    Cast cast;
    DispatcherLibrary library{cast};
    DispatcherModel model{cast};
};

void startRuntime() {
    static OdStaticRxObject<ExSystemServices> services;
    if (!odrxSystemServices()) {
        odInitialize(&services);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    startRuntime();
    Run(Bytes(data, size)).play();
    return 0;
}
