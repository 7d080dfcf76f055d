// Reactors that follow scripts, in a world that is the library's or the model's.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "bytes.h"
#include "sequence_journal.h"

namespace sequence {

enum class Event {
    kSysConfigLoaded,
    kUserConfigLoaded,
    kMainWindowReady,
    kAppStarted,
    kAppExiting,
    kCount
};

enum class Verb {
    kAdd,       // a: the reactor in a slot
    kRemove,    // b: the reactor in a slot, gone or not
    kFire,      // c: an event
    kTryFire,   // d: the same, and whatever is raised ends here
    kRelease,   // e: the main program's own reference to the reactor in a slot
    kWithdraw,  // f: the dispatcher, out of the registry
    kInstall,   // g: a new dispatcher, where there is none
    kRaise,     // h
    kCount,
};

struct Action {
    Verb verb = Verb::kAdd;
    std::size_t object = 0;  // a slot or an event
};

struct Script {
    std::vector<Action> onEvent;
    std::vector<Action> atEnd;  // done by the reactor's destructor
    bool answers = true;        // to queryX
};

/// What a reactor raises.
struct Raised {};

inline constexpr std::size_t kSlots = 6;

/// All reactors of a run, by number. The number of one that went isn't used again; its address may
/// be.
struct Cast {
    struct Role {
        Script script;
        const void* address = nullptr;
    };
    std::vector<Role> roles;
    /// Whom the actions mean by a slot: the reactor last made for it, -1 at first.
    std::array<int, kSlots> slots = {-1, -1, -1, -1, -1, -1};

    int in(std::size_t slot) const { return slots[slot % kSlots]; }
    const Role& role(int reactor) const { return roles[static_cast<std::size_t>(reactor)]; }
};

/// A world in which actions have effects. Reactors that went may be removed, but not added.
class World {
  public:
    explicit World(const Cast& everybody) : cast(everybody) {}
    virtual ~World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    virtual bool isAlive(int reactor) const = 0;
    virtual void add(int reactor) = 0;
    virtual void remove(int reactor) = 0;
    virtual void fire(Event event) = 0;
    virtual void release(int reactor) = 0;
    virtual void withdraw() = 0;
    virtual void install() = 0;

    /// One action of the program itself. Nothing is raised.
    void perform(const Action& action);
    /// What a reactor does when it hears an event, and when it goes.
    void hear(int reactor, Event event);
    void end(int reactor);

    Journal journal;

  protected:
    const Cast& cast;

  private:
    void follow(int reactor, const Action& action);
    void fireWithin(std::size_t event);
    void tryFire(std::size_t event);

    int depth = 0;
    int hearingsLeft = 0;
};

}  // namespace sequence
