#include "sequence_fibers_run.h"

#include <algorithm>

#include "property.h"

namespace sequence {

namespace {

enum class Op {
    kCreate,           // a: routine, data
    kFailToCreate,     // b: routine, data
    kSwitch,           // c: record
    kSwitchByData,     // d: data
    kGiveBack,         // e: record
    kAskForNothing,    // f
    kAskElsewhere,     // g
    kConvert,          // h: data
    kTakeDown,         // i: data
    kReturn,           // j
    kReturnFromWaits,  // k: how many
    kAskManager,       // l: what
    kCreateCoroutine,  // m: routine, data, value
    kFailToCoroutine,  // n: the same
    kSwitchCoroutine,  // o: coroutine
    kYield,            // p
    kDeleteCoroutine,  // q: coroutine
    kChangeCoroutine,  // r: coroutine, value, flag
    kExchangeService,  // s
    kWithoutService,   // t
    kNoCoroutine,      // u
    kDawdle,           // v: how many
    kCount,
};

}  // namespace

FiberRun* FiberRun::running = nullptr;
char FiberRun::lastTag;

void* FiberRun::tag(std::size_t number) {
    static char tags[kTags - 1];
    return number == 0 ? nullptr : &tags[number - 1];
}

FiberRun::FiberRun(Bytes bytes)
    : program(bytes),
      services{OdRxObjectImpl<VoFiberService>::createObject(),
               OdRxObjectImpl<VoFiberService>::createObject()},
      manager(OdRxObjectImpl<vosi::CCoroutineManager>::createObject()) {}

VoFiberRoutine FiberRun::routineAt(int number) {
    constexpr std::array<VoFiberRoutine, 2> all = {&routine<0>, &routine<1>};
    return number == kNone ? nullptr : all[static_cast<std::size_t>(number)];
}

void FiberRun::play() {
    running = this;
    hookSystemCalls();
    registerFibers(services[registered].get());
    registerManager(manager.get());
    // '1' puts off the conversion to an operation of the program.
    if (!program.coin()) {
        convert(pickData());
    }
    live({.isMain = true, .record = kNone, .tenancy = 0});
    finish();
    endAll();
}

// ---- on each thread ----

void FiberRun::enter(int routineNumber, void* data) {
    if (within != kNone) {
        runWithinCreation(routineNumber, data);
        return;
    }
    requireProperty(entersRoutine, "a routine begins at a switch to a fiber that rests");
    entersRoutine = false;
    const int record = model.current();
    requireProperty(model.at(record).routine == routineNumber && model.at(record).data == data,
                    "a fiber runs its own routine with its own data");
    live({.isMain = false, .record = record, .tenancy = model.at(record).tenancy});
}

// The baton is still the creator's, so that nothing may be done.
void FiberRun::runWithinCreation(int routineNumber, const void* data) {
    ++runsWithin;
    requireProperty(model.at(within).routine == routineNumber && model.at(within).data == data,
                    "a record that is used again runs its new routine with its new data");
    requireProperty(
        fibers().currentFiber() == handle(model.current()) && fibers().isOffCurrentFiber(),
        "the creator is current while its fiber comes to rest");
}

void FiberRun::live(const Self& self) {
    check();
    for (;;) {
        if (program.atEnd()) {
            if (self.isMain || !switchDirectly(self, model.main())) {
                return;
            }
        } else if (!step(self)) {
            return;
        }
        check();
    }
}

bool FiberRun::step(const Self& self) {
    switch (program.choice<Op>()) {
        case Op::kCreate:
            return create(false), true;
        case Op::kFailToCreate:
            return create(true), true;
        case Op::kSwitch:
            return switchDirectly(self, pickRecord());
        case Op::kSwitchByData:
            return switchByData(self);
        case Op::kGiveBack:
            return giveBack(), true;
        case Op::kAskForNothing:
            return askForNothing(), true;
        case Op::kAskElsewhere:
            return askElsewhere(), true;
        case Op::kConvert:
            if (void* const data = pickData(); self.isMain) {
                convert(data);
            }
            return true;
        case Op::kTakeDown:
            return tryTakingDown(self);
        case Op::kReturn:
            return returnFromRoutine(self);
        case Op::kReturnFromWaits:
            return returnFromWaits(static_cast<int>(program.digit(8))), true;
        case Op::kAskManager:
            return askManager(), true;
        case Op::kCreateCoroutine:
            return createCoroutine(false), true;
        case Op::kFailToCoroutine:
            return createCoroutine(true), true;
        case Op::kSwitchCoroutine:
            return switchToCoroutine(self, pickCoroutine());
        case Op::kYield:
            return yield(self);
        case Op::kDeleteCoroutine:
            return deleteCoroutine(pickCoroutine()), true;
        case Op::kChangeCoroutine:
            return changeCoroutine(), true;
        case Op::kExchangeService:
            return exchangeService(), true;
        case Op::kWithoutService:
            return doWithoutService(), true;
        case Op::kNoCoroutine:
            return createNoCoroutine(), true;
        case Op::kDawdle:
            return dawdleBeforeWaits(static_cast<int>(program.digit(4))), true;
        case Op::kCount:
            break;
    }
    return true;
}

bool FiberRun::cameBack(const Self& self) {
    if (closing || (!self.isMain && model.at(self.record).tenancy != self.tenancy)) {
        ++tails;
        return false;
    }
    const int record = self.isMain ? model.main() : self.record;
    requireProperty(!entersRoutine, "a routine is entered and not gone on with");
    requireProperty(model.current() == record || (self.isMain && model.isAstray()),
                    "whoever was switched to holds the baton");
    model.arrive(record);
    return true;
}

int FiberRun::pickRecord() {
    const std::size_t count = model.records().size();
    const std::size_t picked = program.digit(std::max<std::size_t>(count, 1));
    return count == 0 ? kNone : static_cast<int>(picked);
}

void* FiberRun::pickData() {
    return tag(program.digit(kTags));
}

}  // namespace sequence
