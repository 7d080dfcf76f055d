// The operations of the coroutine manager.
#include <algorithm>

#include "property.h"
#include "sequence_fibers_run.h"

namespace sequence {

namespace {

constexpr int kMostCoroutines = 8;
char values[3];

void* value(std::size_t number) {
    return number == 0 ? nullptr : &values[number - 1];
}

}  // namespace

// The main coroutine comes into being at the first need, whatever the operation.
void FiberRun::noteMain() {
    if (!tree.hasMain()) {
        objects.push_back(manager->mainCoroutine());
        tree.makeMain(objects.front(), model.current());
    }
}

// One that is alive, kNone for none.
int FiberRun::pickCoroutine() {
    std::vector<int> alive = {kNone};
    for (int number = 0; number < static_cast<int>(objects.size()); ++number) {
        if (coroutine(number).isAlive) {
            alive.push_back(number);
        }
    }
    return alive[program.digit(alive.size())];
}

void FiberRun::askManager() {
    switch (program.digit(3)) {
        case 0:
            noteMain();
            requireProperty(manager->mainCoroutine() == coroutine(CoroutineModel::main()).address,
                            "there is one main coroutine");
            return;
        case 1: {
            const auto* current = manager->currentCoroutine();
            noteMain();
            requireProperty(current == tree.of(model.current()),
                            "the current coroutine is that of the current fiber");
            return;
        }
        default: {
            const bool isMain = manager->isMainCoroutine();
            noteMain();
            requireProperty(
                isMain == (tree.of(model.current()) == coroutine(CoroutineModel::main()).address),
                "the main coroutine is current on its fiber");
        }
    }
}

void FiberRun::createCoroutine(bool fails) {
    const int number = static_cast<int>(program.digit(2));
    void* const data = pickData();
    void* const userData = value(program.digit(4));
    const bool isOnCoroutine = !tree.hasMain() || tree.isAliveAt(tree.of(model.current()));
    const auto alive = std::count_if(tree.coroutines().begin(), tree.coroutines().end(),
                                     [](const auto& one) { return one.isAlive; });
    const bool hasCurrent = model.current() != kNone;
    if (!isOnCoroutine || alive >= kMostCoroutines || (hasCurrent && !mayCreate())) {
        return;
    }
    if (fails) {
        failNextStart();
    }
    const bool willFail = fails && hasCurrent && model.lastFree() == kNone;
    int record = kNone;
    vosi::VosiCoroutine* made = nullptr;
    if (hasCurrent && !willFail) {
        const FiberModel::Creation creation = beginCreation(number, data);
        record = creation.record;
        made = manager->createCoroutine(routineAt(number), data, userData);
        requireProperty(made, "a coroutine is made");
        endCreation(creation, made->fiber());
    } else {
        made = manager->createCoroutine(routineAt(number), data, userData);
        requireProperty(made && !made->fiber(), "a coroutine does without the fiber");
    }
    requireProperty(takeStartFailure() == willFail, "a thread is started for a new record alone");
    failedStarts += willFail;
    noteMain();
    objects.push_back(made);
    tree.make(made, record, userData, tree.of(model.current()));
}

void FiberRun::createNoCoroutine() {
    requireProperty(!manager->createCoroutine(nullptr, &values, &values),
                    "there is no coroutine without a routine");
}

bool FiberRun::switchToCoroutine(const Self& self, int target) {
    vosi::VosiCoroutine* const to = target == kNone ? nullptr : object(target);
    if (target == kNone || coroutine(target).record == kNone) {
        requireProperty(!manager->switchToCoroutine(to), "there is nothing to switch to");
        return true;
    }
    const int record = coroutine(target).record;
    if (coroutine(target).address == tree.of(model.current()) ||
        (record == model.current() && !model.hasGivenItselfBack())) {
        requireProperty(manager->switchToCoroutine(to), "the current coroutine runs already");
        return true;
    }
    if (model.isAstray() || !model.canSwitchTo(record)) {
        return true;
    }
    bool hasSwitched = false;
    if (!sleepThrough(self, record, static_cast<int>(registered),
                      [&] { hasSwitched = manager->switchToCoroutine(to); })) {
        return false;
    }
    requireProperty(hasSwitched, "a switch says that it was made");
    return true;
}

bool FiberRun::yield(const Self& self) {
    auto* const own = manager->currentCoroutine();
    noteMain();
    requireProperty(own == tree.of(model.current()), "a coroutine knows itself");
    if (!tree.isAliveAt(own)) {
        return true;
    }
    const int target = tree.aliveAt(own->returnCoroutine());
    return target == kNone || switchToCoroutine(self, target);
}

void FiberRun::deleteCoroutine(int target) {
    if (target == kNone || target == CoroutineModel::main()) {
        auto* const spared = target == kNone ? nullptr : object(target);
        requireProperty(!manager->deleteCoroutine(spared), "the main coroutine stays");
        return;
    }
    const int record = coroutine(target).record;
    if (model.isAstray() && record == model.current()) {
        return;
    }
    requireProperty(manager->deleteCoroutine(object(target)), "a coroutine is deleted");
    tree.remove(target);
    if (record != kNone) {
        model.giveBack(record);
    }
}

void FiberRun::changeCoroutine() {
    const int target = pickCoroutine();
    void* const userData = value(program.digit(4));
    const bool flag = program.coin();
    if (target == kNone) {
        return;
    }
    object(target)->setUserData(userData);
    object(target)->setFlag(flag);
    CoroutineModel::Coroutine& changed = tree.coroutines()[static_cast<std::size_t>(target)];
    changed.userData = userData;
    changed.flag = flag;
}

void FiberRun::exchangeService() {
    registered = 1 - registered;
    registerFibers(services[registered].get());
}

void FiberRun::doWithoutService() {
    registerFibers(nullptr);
    bool hasRaised = false;
    try {
        manager->currentCoroutine();
    } catch (const OdError& error) {
        hasRaised = error.code() == eKeyNotFound;
    }
    registerFibers(services[registered].get());
    requireProperty(hasRaised, "the fiber service is fetched for each use");
}

}  // namespace sequence
