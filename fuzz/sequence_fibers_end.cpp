// How a program ends: everything is taken down, and nothing may be left.
#include "property.h"
#include "sequence_fibers_run.h"

namespace sequence {

void FiberRun::takeDown(void* data) {
    int threads = 0;
    int sleepers = 0;
    int kept = failedStarts;
    for (const FiberModel::Record& record : model.records()) {
        threads += record.isFree && !record.isConverted;
        sleepers += record.isFree && record.place == FiberModel::Place::kAsleep;
        kept += !record.isFree;
    }
    tails = 0;
    requireProperty(fibers().convertFiberToThread(data) == 1, "the first fiber takes all down");
    model.takeDown();
    takenDown = true;
    requireProperty(tails == sleepers, "of the free fibers, and of them alone, routines end");
    requireProperty(endedThreads() == threads, "the threads of free records have ended");
    requireProperty(static_cast<int>(standingRecords()) == kept - 1,
                    "records in use stay, but for the caller's");
    checkTakenDown();
}

void FiberRun::convertForTheEnd() {
    handles.push_back(fibers().convertThreadToFiber(&lastTag));
    model.convert(&lastTag);
}

void FiberRun::finish() {
    if (takenDown) {
        return;
    }
    if (model.current() == kNone || model.isAstray()) {
        convertForTheEnd();
    }
    for (int number = 0; number < static_cast<int>(objects.size()); ++number) {
        if (coroutine(number).isAlive) {
            deleteCoroutine(number);
        }
    }
    giveBackAllButMain();
    if (model.find(model.at(model.main()).data) != model.main()) {
        convertForTheEnd();
        giveBackAllButMain();
    }
    check();
    takeDown(model.at(model.main()).data);
}

// Also what the thread was before it was converted again, now that nothing is made any more.
void FiberRun::giveBackAllButMain() {
    for (int record = 0; record < static_cast<int>(handles.size()); ++record) {
        if (record != model.main() && !model.at(record).isFree) {
            fibers().deleteFiber(handle(record));
            model.giveBack(record);
        }
    }
}

void FiberRun::endAll() {
    closing = true;
    forgetFibers();
    requireProperty(startedThreads() == endedThreads(), "no thread is left");
    // Coroutines that outlived the fibers are nobody's; the main one is the manager's.
    for (std::size_t number = 1; number < objects.size(); ++number) {
        if (tree.coroutines()[number].isAlive) {
            ::operator delete(static_cast<vosi::CCoroutine*>(objects[number]));
        }
    }
    registerFibers(nullptr);
    registerManager(nullptr);
    requireProperty(
        manager->numRefs() == 1 && services[0]->numRefs() == 1 && services[1]->numRefs() == 1,
        "nobody holds a service at the end");
    running = nullptr;
}

}  // namespace sequence
