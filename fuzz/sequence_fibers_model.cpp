#include "sequence_fibers_model.h"

#include <algorithm>

namespace sequence {

bool FiberModel::canSwitchTo(int record) const {
    return record != baton && !at(record).isFree &&
           (at(record).place == Place::kAtHead || at(record).place == Place::kAsleep);
}

int FiberModel::find(const void* data) const {
    const auto found = std::find_if(all.begin(), all.end(),
                                    [data](const Record& record) { return record.data == data; });
    return found == all.end() || found->isFree ? kNone : static_cast<int>(found - all.begin());
}

int FiberModel::lastFree() const {
    const auto found =
        std::find_if(all.rbegin(), all.rend(), [](const Record& record) { return record.isFree; });
    return static_cast<int>(all.rend() - found) - 1;
}

void FiberModel::convert(void* data) {
    if (converted != kNone) {
        edit(converted).place = Place::kLeft;
    }
    converted = baton = static_cast<int>(all.size());
    all.push_back({.data = data, .place = Place::kRunning, .isConverted = true});
    astray = false;
}

FiberModel::Creation FiberModel::create(void* data, int routine) {
    const int reused = lastFree();
    const Creation creation{
        .record = reused == kNone ? static_cast<int>(all.size()) : reused,
        .hasTail = reused != kNone && at(reused).place == Place::kAsleep,
        .runsWithin = reused != kNone && at(reused).place == Place::kAtHead,
    };
    if (reused == kNone) {
        all.emplace_back();
    }
    Record& record = edit(creation.record);
    record.data = data;
    record.routine = routine;
    record.creator = baton;
    record.place = Place::kAtHead;
    record.isFree = false;
    record.asleepWith = kNone;
    return creation;
}

void FiberModel::switchTo(int record, int service) {
    edit(baton).place = Place::kAsleep;
    edit(baton).asleepWith = service;
    edit(record).place = Place::kRunning;
    baton = record;
}

void FiberModel::giveBack(int record) {
    Record& given = edit(record);
    given.isFree = true;
    given.data = nullptr;
    given.routine = kNone;
    given.creator = kNone;
    ++given.tenancy;
}

void FiberModel::returnFromRoutine() {
    edit(baton).place = Place::kAtHead;
    edit(converted).place = Place::kRunning;
    astray = true;
}

void FiberModel::takeDown() {
    for (Record& record : all) {
        if (record.isFree) {
            record.asleepWith = kNone;
        }
    }
    baton = kNone;
}

int CoroutineModel::aliveAt(const void* address) const {
    const auto found = std::find_if(all.begin(), all.end(), [address](const Coroutine& coroutine) {
        return coroutine.isAlive && coroutine.address == address;
    });
    return found == all.end() ? kNone : static_cast<int>(found - all.begin());
}

const void* CoroutineModel::of(int record) const {
    const auto entry = byRecord.find(record);
    return entry == byRecord.end() ? nullptr : entry->second;
}

bool CoroutineModel::isOwned(int record) const {
    return std::any_of(all.begin() + (hasMain() ? 1 : 0), all.end(),
                       [record](const Coroutine& coroutine) {
                           return coroutine.isAlive && coroutine.record == record;
                       });
}

void CoroutineModel::makeMain(const void* address, int record) {
    all.push_back({.address = address, .record = record});
    byRecord[record] = address;
}

void CoroutineModel::make(const void* address, int record, void* userData, const void* creator) {
    if (const int parent = aliveAt(creator); parent != kNone) {
        all[static_cast<std::size_t>(parent)].child = address;
    }
    all.push_back({.address = address, .record = record, .userData = userData, .parent = creator});
    byRecord[record] = address;
}

void CoroutineModel::remove(int coroutine) {
    Coroutine& removed = all[static_cast<std::size_t>(coroutine)];
    removed.isAlive = false;
    if (removed.record != kNone) {
        byRecord.erase(removed.record);
    }
}

}  // namespace sequence
