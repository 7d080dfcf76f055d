// What must hold whenever somebody runs.
#include <algorithm>

#include "property.h"
#include "sequence_fibers_run.h"

namespace sequence {

void FiberRun::check() const {
    VoFiberSvr& service = fibers();
    const bool isNobody = model.current() == kNone;
    requireProperty(service.currentFiber() == handle(model.current()),
                    "the model knows who holds the baton");
    requireProperty(
        service.currentFiberData() == (isNobody ? nullptr : model.at(model.current()).data),
        "the current data are those of the current fiber");
    requireProperty(service.isOffCurrentFiber() == (isNobody || model.isAstray()),
                    "the current fiber's thread is on it");
    for (std::size_t number = 0; number < kTags; ++number) {
        requireProperty(service.findFiberByData(tag(number)) == handle(model.find(tag(number))),
                        "the first record with the data is found");
    }
    checkRecords();
    checkServices();
    checkCoroutines();
}

void FiberRun::checkRecords() const {
    requireProperty(listedRecords() == handles, "records stand in the order of their creation");
    requireProperty(standingRecords() == handles.size() + static_cast<std::size_t>(failedStarts),
                    "no record is freed");
    int threads = 0;
    for (std::size_t number = 0; number < handles.size(); ++number) {
        const FiberModel::Record& record = model.records()[number];
        const RecordView view = viewOf(handles[number]);
        threads += !record.isConverted;
        requireProperty(view.isFree == record.isFree && view.isConverted == record.isConverted,
                        "a record is free once it was given back, until it is used again");
        requireProperty(view.self == (record.isFree ? nullptr : handles[number]),
                        "a record in use names itself");
        requireProperty(view.routine == routineAt(record.routine) && view.data == record.data &&
                            fibers().fiberData(handles[number]) == record.data,
                        "a record has its fiber's routine and data");
        requireProperty(view.next == handle(record.creator), "a record names its creator");
    }
    requireProperty(startedThreads() == threads, "a record has one thread for good");
}

void FiberRun::checkServices() const {
    for (std::size_t service = 0; service < services.size(); ++service) {
        const auto sleepers = std::count_if(
            model.records().begin(), model.records().end(), [service](const auto& record) {
                return record.asleepWith == static_cast<int>(service);
            });
        requireProperty(services[service]->numRefs() == 1 + (registered == service) + sleepers,
                        "the manager holds the fiber service during switches alone");
    }
}

void FiberRun::checkTakenDown() {
    requireProperty(!fibers().currentFiber() && !fibers().currentFiberData() &&
                        fibers().isOffCurrentFiber() && listedRecords().empty(),
                    "nothing is current once all was taken down");
    requireProperty(!fibers().createFiber(0, routineAt(0), nullptr) &&
                        fibers().convertFiberToThread(nullptr) == 0,
                    "there are no more fibers once all was taken down");
    checkServices();
    if (tree.hasMain()) {
        requireProperty(manager->currentCoroutine() == tree.of(kNone),
                        "there is no current coroutine without a current fiber");
    }
}

void FiberRun::checkCoroutines() const {
    for (std::size_t number = 0; number < objects.size(); ++number) {
        const CoroutineModel::Coroutine& expected = tree.coroutines()[number];
        if (!expected.isAlive) {
            continue;
        }
        vosi::VosiCoroutine& one = *objects[number];
        requireProperty(one.fiber() == handle(expected.record), "a coroutine keeps its fiber");
        requireProperty(one.userData() == expected.userData && one.flag() == expected.flag,
                        "a coroutine keeps its caller's values");
        requireProperty(
            one.parent() == expected.parent && one.child() == expected.child && !one.spare(),
            "a coroutine knows who made it, and whom it made last");
        const void* const home =
            expected.parent ? expected.parent : coroutine(CoroutineModel::main()).address;
        requireProperty(one.returnCoroutine() == home, "a coroutine yields to its creator");
    }
}

}  // namespace sequence
