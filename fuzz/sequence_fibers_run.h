// One program on the fiber service and the coroutine manager, with the model beside it.
//
// Every fiber interprets the same program: whoever holds the baton does the next operation. So the
// program, the model and all counts belong to the holder of the baton, and have no locks.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "bytes.h"
#include "sequence_fibers_model.h"
#include "sequence_fibers_world.h"
#include "sicorout.h"

namespace sequence {

class FiberRun {
  public:
    explicit FiberRun(Bytes bytes);
    FiberRun(const FiberRun&) = delete;
    FiberRun& operator=(const FiberRun&) = delete;

    /// Called once, on the thread that becomes the first fiber. Leaves nothing.
    void play();

  private:
    // What goes on on one thread, from the entry of a routine to its end.
    struct Self {
        bool isMain;
        int record;
        int tenancy;
    };

    // Data of fibers: null is the first, and one that no program can name.
    static constexpr std::size_t kTags = 5;
    static void* tag(std::size_t number);
    static char lastTag;

    template <int Routine>
    static void routine(void* data) {
        running->enter(Routine, data);
    }
    static VoFiberRoutine routineAt(int number);
    void enter(int routineNumber, void* data);
    void runWithinCreation(int routineNumber, const void* data);
    void live(const Self& self);
    // False when the routine has to return.
    bool step(const Self& self);

    // Fibers.
    void create(bool fails);
    void askForNothing();
    void askElsewhere();
    void convert(void* data);
    void giveBack();
    bool switchDirectly(const Self& self, int target);
    bool switchByData(const Self& self);
    bool returnFromRoutine(const Self& self);
    bool tryTakingDown(const Self& self);
    void takeDown(void* data);

    // Coroutines.
    void askManager();
    void createCoroutine(bool fails);
    void createNoCoroutine();
    bool switchToCoroutine(const Self& self, int coroutine);
    bool yield(const Self& self);
    void deleteCoroutine(int coroutine);
    void changeCoroutine();
    void exchangeService();
    void doWithoutService();
    void noteMain();
    int pickCoroutine();

    bool sleepThrough(const Self& self, int target, int service, const std::function<void()>& call);
    bool cameBack(const Self& self);
    FiberModel::Creation beginCreation(int routineNumber, void* data);
    void endCreation(const FiberModel::Creation& creation, VoFiberHandle handle);
    bool mayCreate() const;

    void check() const;
    void checkRecords() const;
    void checkServices() const;
    void checkCoroutines() const;
    void checkTakenDown();

    void finish();
    void convertForTheEnd();
    void giveBackAllButMain();
    void endAll();

    VoFiberSvr& fibers() const { return *services[registered]; }
    VoFiberHandle handle(int record) const {
        return record == kNone ? nullptr : handles[static_cast<std::size_t>(record)];
    }
    vosi::VosiCoroutine* object(int coroutine) const {
        return objects[static_cast<std::size_t>(coroutine)];
    }
    const CoroutineModel::Coroutine& coroutine(int number) const {
        return tree.coroutines()[static_cast<std::size_t>(number)];
    }
    int pickRecord();
    void* pickData();

    static FiberRun* running;

    Bytes program;
    FiberModel model;
    CoroutineModel tree;
    std::array<VoFiberSvrPtr, 2> services;  // of the same fibers
    std::size_t registered = 0;
    vosi::VosiCoroutineManagerSvrPtr manager;
    std::vector<VoFiberHandle> handles;         // by record
    std::vector<vosi::VosiCoroutine*> objects;  // by coroutine

    bool entersRoutine = false;  // what the last switch leads to
    int within = kNone;          // the record that is being made and runs at once
    int runsWithin = 0;
    int tails = 0;  // of routines that were woken after their record was given back
    int failedStarts = 0;
    bool takenDown = false;
    bool closing = false;
};

}  // namespace sequence
