// Objects with last wills and what may be done with dictionaries, in a world that is the library's
// or the model's.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "sequence_journal.h"

namespace sequence {

// Each takes three numbers, of which it uses those that are named.
enum class Verb {
    kPut,        // a: door, key, slot; an empty slot is a null object
    kTake,       // b: door, key
    kLook,       // c: door, key
    kHas,        // d: door, key
    kList,       // e: door
    kDrop,       // f: -, -, slot
    kExtension,  // g: class, protocol; what the class gives
    // The rest is for the program alone; wills do without.
    kKeep,      // h: door, key, slot; only an empty slot takes it
    kCast,      // i: door, key; to a class that some objects don't answer to
    kExtend,    // j: class, protocol, slot
    kWithdraw,  // k: class, protocol
    kQuery,     // l: -, protocol, slot
    kEndClass,  // m: class or, from kChain on, protocol
    kAway,      // n: the application goes away, or comes back
    kNewLife,   // o: the application and the runtime end and begin again
    kCount,
};
inline constexpr std::size_t kVerbsOfWills = static_cast<std::size_t>(Verb::kKeep);

struct Action {
    Verb verb = Verb::kPut;
    std::size_t first = 0;
    std::size_t second = 0;
    std::size_t third = 0;
};

// Doors to dictionaries. Two lead to that of the services; the last ones to those in slots.
inline constexpr std::size_t kExported = 0;
inline constexpr std::size_t kServices = 1;
inline constexpr std::size_t kRegistry = 2;
inline constexpr std::size_t kClasses = 3;
inline constexpr std::size_t kFirstOwn = 4;
inline constexpr std::size_t kDoors = 6;

inline constexpr std::size_t kSlots = 6;  // references of the program itself
inline constexpr std::size_t kChain = 3;  // classes, each derived from the one before
inline constexpr std::size_t kProtocols = 2;
/// The classes that carry extensions: the chain, and the root of all classes.
inline constexpr std::size_t kCarriers = kChain + 1;

// What stands for an object: its number, or
inline constexpr int kNobody = -1;
inline constexpr int kForeign = -2;  // an object of the runtime's own

/// All keys; they differ in case, length, composition, order of code points, and behind a null.
const std::vector<std::u32string>& keys();
/// The place of a key among them, -1 for any other text.
int keyNumber(const std::u32string& key);

/// An object of a run, by number. Numbers aren't used again.
struct Role {
    bool isDictionary = false;
    bool answers = true;  // to queryX
    std::vector<Action> will;
};

/// A world in which actions have effects. Operations on what isn't there do nothing. Numbers of
/// objects are those of what was given back or found, and is let go again.
class World {
  public:
    explicit World(const std::vector<Role>& everybody) : roles(everybody) {}
    virtual ~World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void perform(const Action& action);
    /// What an object does when it goes.
    void end(int number);

    Journal journal;

  protected:
    virtual bool isOpen(std::size_t door) const = 0;
    virtual int put(std::size_t door, std::size_t key, std::size_t slot) = 0;
    virtual int take(std::size_t door, std::size_t key) = 0;
    virtual int look(std::size_t door, std::size_t key) = 0;
    virtual bool has(std::size_t door, std::size_t key) = 0;
    virtual std::vector<int> list(std::size_t door) = 0;
    virtual void drop(std::size_t slot) = 0;
    virtual int extension(std::size_t carrier, std::size_t protocol) = 0;
    virtual void keep(std::size_t door, std::size_t key, std::size_t slot) = 0;
    virtual int cast(std::size_t door, std::size_t key) = 0;
    virtual int extend(std::size_t carrier, std::size_t protocol, std::size_t slot) = 0;
    virtual int withdraw(std::size_t carrier, std::size_t protocol) = 0;
    virtual int query(std::size_t protocol, std::size_t slot) = 0;
    virtual void endClass(std::size_t which) = 0;
    virtual void away() = 0;
    virtual void newLife() = 0;
    /// The number of the dictionary behind a door, kNobody for one that isn't numbered.
    virtual int dictionaryAt(std::size_t door) const = 0;
    virtual int inSlot(std::size_t slot) const = 0;

    const Role& role(int number) const { return roles[static_cast<std::size_t>(number)]; }
    bool isOwnDictionary(int number) const { return number >= 0 && role(number).isDictionary; }

  private:
    int resultOf(const Action& action);
    int throughDoor(const Action& action);
    bool wouldClose(std::size_t door, std::size_t slot) const;

    const std::vector<Role>& roles;
};

}  // namespace sequence
