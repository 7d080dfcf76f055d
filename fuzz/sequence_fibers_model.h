// The model of fibers and coroutines: who holds the baton, which records are whose, who knows whom.
#pragma once

#include <map>
#include <vector>

namespace sequence {

inline constexpr int kNone = -1;

class FiberModel {
  public:
    enum class Place {
        kLeft,    // the thread that was converted goes on in another record
        kAtHead,  // of the loop of its thread: a switch enters the routine
        kAsleep,  // in a switch
        kRunning,
    };

    struct Record {
        void* data = nullptr;
        int routine = kNone;
        int creator = kNone;
        Place place = Place::kAtHead;
        bool isFree = false;
        bool isConverted = false;
        int tenancy = 0;         // changes when the record is given back
        int asleepWith = kNone;  // the service that the manager holds meanwhile
    };

    /// What createFiber does to the record that it gives.
    struct Creation {
        int record;
        bool hasTail;     // an old routine returns first
        bool runsWithin;  // the new routine runs at once, though nobody switched to it
    };

    /// In the order of creation, which is that of the list.
    const std::vector<Record>& records() const { return all; }
    const Record& at(int record) const { return all[static_cast<std::size_t>(record)]; }
    int current() const { return baton; }
    /// The record of the thread that was converted, the latest.
    int main() const { return converted; }
    /// A routine returned, so that the main thread runs without the baton.
    bool isAstray() const { return astray; }
    bool canSwitchTo(int record) const;
    bool hasGivenItselfBack() const { return baton != kNone && at(baton).isFree; }
    /// The first with the data; kNone too when that one is free.
    int find(const void* data) const;
    /// The record that createFiber takes, kNone for a new one.
    int lastFree() const;

    void convert(void* data);
    Creation create(void* data, int routine);
    /// With the service that the manager holds during the sleep, kNone for a direct switch.
    void switchTo(int record, int service = kNone);
    /// The caller of a switch runs again.
    void arrive(int record) { edit(record).asleepWith = kNone; }
    void giveBack(int record);
    void returnFromRoutine();
    /// The last action: threads of free records end.
    void takeDown();

  private:
    Record& edit(int record) { return all[static_cast<std::size_t>(record)]; }

    std::vector<Record> all;
    int baton = kNone;
    int converted = kNone;
    bool astray = false;
};

class CoroutineModel {
  public:
    struct Coroutine {
        const void* address = nullptr;
        int record = kNone;  // kNone for none
        void* userData = nullptr;
        const void* parent = nullptr;
        const void* child = nullptr;
        bool flag = true;
        bool isAlive = true;
    };

    const std::vector<Coroutine>& coroutines() const { return all; }
    std::vector<Coroutine>& coroutines() { return all; }
    bool hasMain() const { return !all.empty(); }
    /// The first one that was made.
    static constexpr int main() { return 0; }
    bool isAliveAt(const void* address) const { return aliveAt(address) != kNone; }
    int aliveAt(const void* address) const;
    /// Of the record; entries of coroutines that went stay where they had no fiber.
    const void* of(int record) const;
    bool isOwned(int record) const;

    void makeMain(const void* address, int record);
    void make(const void* address, int record, void* userData, const void* creator);
    void remove(int coroutine);

  private:
    std::vector<Coroutine> all;
    std::map<int, const void*> byRecord;
};

}  // namespace sequence
