// The model of the event dispatcher: lists of numbers, and every reference counted.
#pragma once

#include <vector>

#include "sequence_dispatcher_script.h"

namespace sequence {

class DispatcherModel : public World {
  public:
    using World::World;

    bool isAlive(int reactor) const override { return references(reactor) > 0; }
    void add(int reactor) override;
    void remove(int reactor) override;
    void fire(Event event) override;
    void release(int reactor) override;
    void withdraw() override;
    void install() override;

    /// The reactor of the next number, with the main program's reference.
    void make() { reactors.push_back({.references = 1, .isHeld = true}); }
    bool isHeld(int reactor) const { return reactors[static_cast<std::size_t>(reactor)].isHeld; }
    int references(int reactor) const {
        return reactors[static_cast<std::size_t>(reactor)].references;
    }
    bool isInstalled() const { return installed >= 0; }

  private:
    struct Reactor {
        int references = 0;
        bool isHeld = false;
    };
    struct Dispatcher {
        std::vector<int> list;
        int references = 0;
    };
    class Pass;

    void hold(int reactor) { ++reactors[static_cast<std::size_t>(reactor)].references; }
    void drop(int reactor);
    void dropBackwards(std::vector<int>& list);
    void dropDispatcher(int dispatcher);
    Dispatcher& at(int dispatcher) { return dispatchers[static_cast<std::size_t>(dispatcher)]; }

    std::vector<Reactor> reactors;
    std::vector<Dispatcher> dispatchers;
    int installed = -1;
};

}  // namespace sequence
