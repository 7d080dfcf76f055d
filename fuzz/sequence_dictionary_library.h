// The library's own dictionaries: those of the application and the runtime, and free ones.
#pragma once

#include <drawing/runtime.h>

#include <array>
#include <utility>
#include <vector>

#include "sequence_dictionary_script.h"
#include "voappservice.h"

namespace sequence {

class DictionaryLibrary : public World {
  public:
    using World::World;

    void make(std::size_t slot);
    bool isAlive(int number) const { return objects[static_cast<std::size_t>(number)].isAlive; }
    /// Of an object that is no dictionary and is alive, or stands in a slot.
    long references(int number) const {
        return objects[static_cast<std::size_t>(number)].object->numRefs();
    }
    int inSlot(std::size_t slot) const override { return numberOf(slots[slot].get()); }
    void beginLife();
    void endLife();

    void went(int number) {
        objects[static_cast<std::size_t>(number)].isAlive = false;
        end(number);
    }
    /// The class of an object; null once that was ended.
    OdRxClass* classOf(int number) const {
        return carrierAt(static_cast<std::size_t>(number) % kCarriers);
    }

  protected:
    bool isOpen(std::size_t door) const override { return dictionary(door) || door == kExported; }
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
    void away() override { std::swap(g_appService, awayService); }
    void newLife() override;
    int dictionaryAt(std::size_t door) const override;

  private:
    struct Object {
        OdRxObject* object;
        bool isAlive = true;
    };
    struct Address {
        const OdRxObject* object;
        int number;
    };

    OdRxDictionary* dictionary(std::size_t door) const;
    OdRxObjectPtr at(std::size_t door, std::size_t key) const;
    OdRxClass* carrierAt(std::size_t carrier) const {
        return carrier == kChain ? OdRxObject::desc() : chain[carrier];
    }
    int numberOf(const OdRxObject* object) const;

    std::vector<Object> objects;
    // In order of age, and not taken out when an object goes: a later one may stand there then.
    std::vector<Address> addresses;
    std::array<OdRxObjectPtr, kSlots> slots;
    std::array<OdRxDictionary*, kSlots> going = {};  // whose last reference a slot lets go
    std::array<OdRxClass*, kChain> chain = {};
    std::array<OdRxClass*, kProtocols> protocols = {};
    VoAppService* awayService = nullptr;
};

}  // namespace sequence
