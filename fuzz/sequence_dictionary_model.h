// The model of dictionaries, classes with extensions, and the life of the application around them.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "sequence_dictionary_script.h"

namespace sequence {

class DictionaryModel : public World {
  public:
    using World::World;

    /// The object of the next number, into the slot, which is empty.
    void make(std::size_t slot);
    bool isAlive(int number) const { return references(number) > 0; }
    int references(int number) const {
        return objects[static_cast<std::size_t>(number)].references;
    }
    int inSlot(std::size_t slot) const override { return slots[slot]; }
    void beginLife();
    void endLife();

  protected:
    bool isOpen(std::size_t door) const override;
    int put(std::size_t door, std::size_t key, std::size_t slot) override;
    int take(std::size_t door, std::size_t key) override;
    int look(std::size_t door, std::size_t key) override;
    bool has(std::size_t door, std::size_t key) override;
    std::vector<int> list(std::size_t door) override;
    void drop(std::size_t slot) override;
    int extension(std::size_t carrier, std::size_t protocol) override;
    void keep(std::size_t door, std::size_t key, std::size_t slot) override;
    int cast(std::size_t door, std::size_t key) override;
    int extend(std::size_t carrier, std::size_t protocol, std::size_t slot) override;
    int withdraw(std::size_t carrier, std::size_t protocol) override;
    int query(std::size_t protocol, std::size_t slot) override;
    void endClass(std::size_t which) override;
    void away() override { isThere = !isThere; }
    void newLife() override;
    int dictionaryAt(std::size_t door) const override;

  private:
    using Entries = std::map<std::u32string, int>;
    struct Object {
        int references = 0;
        Entries entries;  // of a dictionary
    };
    // Extensions stand in order of addition, under the protocol's incarnation.
    struct Extension {
        int protocol;
        int object;
    };
    struct Class {
        bool isLiving = false;
        std::vector<Extension> extensions;
    };

    Entries& entriesAt(std::size_t door);
    void hold(int number);
    void letGo(int number);
    void letGoAll(Entries& entries);
    void letGoAll(std::vector<Extension> extensions);
    int extensionFrom(std::size_t carrier, int protocol) const;

    std::vector<Object> objects;
    std::array<int, kSlots> slots = {kNobody, kNobody, kNobody, kNobody, kNobody, kNobody};
    // Dictionaries whose last reference a slot is just letting go.
    std::array<int, kSlots> going = slots;
    Entries services, registry, classDictionary;
    bool isThere = false;  // the application
    bool isUp = false;     // the runtime
    std::array<Class, kCarriers> carriers;
    std::array<int, kProtocols> protocols = {kNobody, kNobody};  // incarnations
    int incarnations = 0;
};

}  // namespace sequence
