#include "sequence_dispatcher_script.h"

#include <drawing/runtime.h>

namespace sequence {

namespace {

constexpr int kDeepest = 3;
constexpr int kMostHearings = 60;  // of one action of the program

}  // namespace

void World::perform(const Action& action) {
    depth = 0;
    hearingsLeft = kMostHearings;
    const bool fires = action.verb == Verb::kFire;
    follow(-1, {fires ? Verb::kTryFire : action.verb, action.object});
}

void World::hear(int reactor, Event event) {
    journal.push_back({"hears", reactor, static_cast<int>(event)});
    --hearingsLeft;
    for (const Action& action : cast.role(reactor).script.onEvent) {
        if (action.verb == Verb::kRaise) {
            throw Raised();
        }
        follow(reactor, action);
    }
}

void World::end(int reactor) {
    journal.push_back({"goes", reactor});
    for (const Action& action : cast.role(reactor).script.atEnd) {
        // A destructor lets nothing out.
        follow(reactor, {action.verb == Verb::kFire ? Verb::kTryFire : action.verb, action.object});
    }
}

void World::follow(int reactor, const Action& action) {
    // Every other reactor means itself by the first slot.
    const int meant = action.object == 0 && reactor % 2 == 1 ? reactor : cast.in(action.object);
    switch (action.verb) {
        case Verb::kAdd:
            return meant >= 0 && isAlive(meant) ? add(meant) : void();
        case Verb::kRemove:
            return meant >= 0 ? remove(meant) : void();
        case Verb::kFire:
            return fireWithin(action.object);
        case Verb::kTryFire:
            return tryFire(action.object);
        case Verb::kRelease:
            return meant >= 0 ? release(meant) : void();
        case Verb::kWithdraw:
            return withdraw();
        case Verb::kInstall:
            return install();
        case Verb::kRaise:
        case Verb::kCount:
            return;
    }
}

void World::fireWithin(std::size_t event) {
    if (depth == kDeepest || hearingsLeft <= 0) {
        return;
    }
    struct Level {
        int& depth;
        explicit Level(int& own) : depth(own) { ++depth; }
        ~Level() { --depth; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
    };
    const Level level(depth);
    fire(static_cast<Event>(event % static_cast<std::size_t>(Event::kCount)));
}

void World::tryFire(std::size_t event) {
    try {
        fireWithin(event);
    } catch (const Raised&) {
        journal.push_back({"raised"});
    } catch (const OdError_NotThatKindOfClass&) {
        journal.push_back({"not that kind of class"});
    }
}

}  // namespace sequence
