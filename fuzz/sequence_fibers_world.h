// The fiber service as in a new process, for each run anew, with a look into its records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/vosicoroutine.h"
#include "vemo_fiber.h"

namespace sequence {

/// What stands in a record.
struct RecordView {
    VoFiberHandle self;
    VoFiberRoutine routine;
    void* data;
    VoFiberHandle next;  // null for none, and for a free record
    bool isFree;
    bool isConverted;
};

RecordView viewOf(VoFiberHandle record);
/// Those of the list, in its order.
std::vector<VoFiberHandle> listedRecords();
/// How many records haven't been freed, in the list or not.
std::size_t standingRecords();

/// Puts itself between the service and the system, with all counts at nothing.
void hookSystemCalls();
/// The next thread isn't started. Says whether one failed since the last call.
void failNextStart();
bool takeStartFailure();
/// That many waits, of whatever thread, return though nobody woke it.
void returnFromWaits(int count);
/// That many waits begin late, with the fiber's mutex held meanwhile.
void dawdleBeforeWaits(int count);
int startedThreads();
int endedThreads();

/// Ends what the taken down service left: records in use, with their threads, and records without
/// one. Their routines must return as soon as they are woken. Afterwards it is as if no fiber had
/// ever been made.
void forgetFibers();

/// Puts a service where the coroutine manager looks for it; null takes it away.
void registerFibers(VoFiberSvr* service);
void registerManager(vosi::VosiCoroutineManagerSvr* manager);

}  // namespace sequence
