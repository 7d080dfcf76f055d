// A fiber world whose fibers run closures, for the tests of fibers.
//
// A process has one fiber world, so each test runs in a process of its own, as ctest starts them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vemo_fiber.h"

class FiberWorld {
  public:
    explicit FiberWorld(void* mainData = nullptr)
        : service(OdRxObjectImpl<VoFiberService>::createObject()),
          main(service->convertThreadToFiber(mainData)) {}
    FiberWorld(const FiberWorld&) = delete;
    FiberWorld& operator=(const FiberWorld&) = delete;

    /// A fiber that runs the body and then switches to the main fiber for good. The tail runs when
    /// that switch returns, and must leave the fibers alone.
    VoFiberHandle create(
        std::function<void()> body, std::function<void()> tail = [] {}) {
        roles.push_back(std::make_unique<Role>(Role{*this, std::move(body), std::move(tail)}));
        return service->createFiber(0, &play, roles.back().get());
    }

    void run(VoFiberHandle fiber) { service->switchToFiber(fiber); }

    VoFiberSvrPtr service;
    VoFiberHandle main;
    std::string trace;  // what the fibers append to, in the order in which they run

  private:
    struct Role {
        FiberWorld& world;
        std::function<void()> body;
        std::function<void()> tail;
    };

    static void play(void* data) {
        Role& role = *static_cast<Role*>(data);
        role.body();
        role.world.run(role.world.main);
        role.tail();
    }

    std::vector<std::unique_ptr<Role>> roles;
};
