// The operations of the fiber service.
#include <algorithm>
#include <thread>

#include "property.h"
#include "sequence_fibers_run.h"

namespace sequence {

namespace {

constexpr std::size_t kMostRecords = 8;
constexpr int kMostConversions = 4;

}  // namespace

bool FiberRun::mayCreate() const {
    return !model.isAstray() && !model.hasGivenItselfBack() &&
           (model.lastFree() != kNone || model.records().size() < kMostRecords);
}

FiberModel::Creation FiberRun::beginCreation(int routineNumber, void* data) {
    const FiberModel::Creation creation = model.create(data, routineNumber);
    within = creation.runsWithin ? creation.record : kNone;
    tails = runsWithin = 0;
    return creation;
}

void FiberRun::endCreation(const FiberModel::Creation& creation, VoFiberHandle made) {
    within = kNone;
    requireProperty(tails == (creation.hasTail ? 1 : 0), "the old routine of a record ends first");
    requireProperty(runsWithin == (creation.runsWithin ? 1 : 0),
                    "a fiber waits for its first switch, unless its record's thread rested");
    requireProperty(made, "a fiber is made");
    if (creation.record == static_cast<int>(handles.size())) {
        handles.push_back(made);
    }
    requireProperty(handle(creation.record) == made, "the last free record is taken");
}

void FiberRun::create(bool fails) {
    const int number = static_cast<int>(program.digit(2));
    void* const data = pickData();
    if (model.current() == kNone) {
        requireProperty(!fibers().createFiber(0, routineAt(number), data),
                        "no fiber is made without a current one");
        return;
    }
    if (!mayCreate()) {
        return;
    }
    if (fails) {
        failNextStart();
        if (model.lastFree() == kNone) {
            requireProperty(!fibers().createFiber(0, routineAt(number), data) && takeStartFailure(),
                            "no fiber is made when no thread starts");
            ++failedStarts;
            return;
        }
    }
    const FiberModel::Creation creation = beginCreation(number, data);
    endCreation(creation, fibers().createFiber(0, routineAt(number), data));
    requireProperty(!takeStartFailure(), "a record that is used again starts no thread");
}

void FiberRun::askForNothing() {
    fibers().switchToFiber(nullptr);
    fibers().switchToFiberByData(&lastTag);
    fibers().deleteFiber(nullptr);
    if (!model.hasGivenItselfBack()) {
        fibers().switchToFiber(fibers().currentFiber());
    }
    requireProperty(!fibers().fiberData(nullptr) && !fibers().findFiberByData(&lastTag),
                    "there is nothing where nothing was asked for");
}

void FiberRun::askElsewhere() {
    std::thread([this] {
        requireProperty(fibers().isOffCurrentFiber(), "no other thread is the current fiber's");
        requireProperty(fibers().currentFiber() == handle(model.current()),
                        "other threads see the current fiber");
    }).join();
}

void FiberRun::convert(void* data) {
    const auto& records = model.records();
    if (std::count_if(records.begin(), records.end(), [](const FiberModel::Record& record) {
            return record.isConverted;
        }) == kMostConversions) {
        return;
    }
    handles.push_back(fibers().convertThreadToFiber(data));
    model.convert(data);
}

void FiberRun::giveBack() {
    const int record = pickRecord();
    if (record == kNone || model.isAstray() || model.at(record).isFree ||
        model.at(record).isConverted || tree.isOwned(record)) {
        return;
    }
    fibers().deleteFiber(handle(record));
    model.giveBack(record);
}

bool FiberRun::sleepThrough(const Self& self, int target, int service,
                            const std::function<void()>& call) {
    entersRoutine = model.at(target).place == FiberModel::Place::kAtHead;
    model.switchTo(target, service);
    call();
    return cameBack(self);
}

bool FiberRun::switchDirectly(const Self& self, int target) {
    if (target == kNone || model.isAstray() || !model.canSwitchTo(target)) {
        return true;
    }
    return sleepThrough(self, target, kNone, [&] { fibers().switchToFiber(handle(target)); });
}

bool FiberRun::switchByData(const Self& self) {
    void* const data = pickData();
    const int target = model.find(data);
    if (target == kNone || target == model.current()) {
        fibers().switchToFiberByData(data);
        return true;
    }
    if (model.isAstray() || !model.canSwitchTo(target)) {
        return true;
    }
    return sleepThrough(self, target, kNone, [&] { fibers().switchToFiberByData(data); });
}

// Legal only where the creator waits to be woken; that one then has to be converted again.
bool FiberRun::returnFromRoutine(const Self& self) {
    if (self.isMain || model.hasGivenItselfBack() ||
        model.at(self.record).creator != model.main()) {
        return true;
    }
    entersRoutine = false;
    model.returnFromRoutine();
    return false;
}

bool FiberRun::tryTakingDown(const Self& self) {
    void* const data = pickData();
    const int found = model.find(data);
    if (found == kNone || found != model.current()) {
        requireProperty(fibers().convertFiberToThread(data) == 0,
                        "nothing is taken down from another fiber");
        return true;
    }
    if (!self.isMain || model.isAstray()) {
        return true;
    }
    takeDown(data);
    return false;
}

}  // namespace sequence
