// Many fibers that hand the baton on to each other at random.
#pragma once

#include <algorithm>
#include <random>
#include <vector>

#include "fiber_world.h"

class FiberCrowd {
  public:
    FiberCrowd(FiberWorld& home, std::size_t size) : world(home), members(size) {
        for (Member& member : members) {
            member.fiber = world.create([this, &member] { handOn(member); });
        }
    }
    FiberCrowd(const FiberCrowd&) = delete;
    FiberCrowd& operator=(const FiberCrowd&) = delete;

    /// Called once: makes that many switches, ends the fibers and gives them back.
    void run(int switches) {
        switchesLeft = switches;
        for (Member& member : members) {
            // Its first turn lasts until all switches are made and may end on another member.
            while (!member.ended) {
                switchTo(member);
            }
        }
        for (const Member& member : members) {
            world.service->deleteFiber(member.fiber);
        }
    }

    /// How often somebody else ran than the one that was switched to.
    int misdirected() const { return strayTurns; }
    /// The turns of the fiber that had the fewest.
    int fewestTurns() const {
        return std::min_element(members.begin(), members.end(),
                                [](const Member& a, const Member& b) { return a.turns < b.turns; })
            ->turns;
    }

  private:
    struct Member {
        VoFiberHandle fiber = nullptr;
        int turns = 0;
        bool ended = false;
    };

    void switchTo(Member& member) {
        expected = &member;
        ++member.turns;
        world.run(member.fiber);
    }

    void handOn(Member& self) {
        countStrayTurn(self);
        while (switchesLeft > 0) {
            Member& next = members[random() % members.size()];
            if (&next != &self) {
                --switchesLeft;
                switchTo(next);
                countStrayTurn(self);
            }
        }
        self.ended = true;
    }

    void countStrayTurn(const Member& self) {
        strayTurns += expected != &self || world.service->currentFiber() != self.fiber;
    }

    FiberWorld& world;
    std::vector<Member> members;
    std::minstd_rand random;
    const Member* expected = nullptr;
    int switchesLeft = 0;
    int strayTurns = 0;
};
