#include "drawing/rxdictionary.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <map>

#include "drawing/rxobjectimpl.h"

namespace {

using Entries = std::map<OdString, OdRxObjectPtr>;

// A way past the walk down the map, for services are fetched anew for each use. It knows the
// entries that came last to a place; whatever isn't found here may still be in the map. Looking
// changes nothing.
class RecentEntries {
  public:
    const Entries::value_type* find(const OdString& key) const {
        for (const Entries::value_type* entry : places[placeOf(key)]) {
            if (entry && entry->first == key) {
                return entry;
            }
        }
        return nullptr;
    }

    void add(const Entries::value_type& entry) {
        Place& place = places[placeOf(entry.first)];
        if (place[0] != &entry) {
            place[1] = std::exchange(place[0], &entry);
        }
    }

    void forget(const OdString& key) {
        for (const Entries::value_type*& entry : places[placeOf(key)]) {
            if (entry && entry->first == key) {
                entry = nullptr;
            }
        }
    }

  private:
    static constexpr std::size_t kPlaceBits = 6;

    using Place = std::array<const Entries::value_type*, 2>;

    // From the length and two pairs of characters, at the end and in the middle: keys begin alike.
    static std::size_t placeOf(const OdString& key) {
        const std::wstring_view text = key.view();
        std::uint64_t mixed = text.size();
        if (text.size() >= 2) {
            mixed += pairAt(text, text.size() - 2) * 3 + pairAt(text, (text.size() - 2) / 2);
        }
        return (mixed * 0x9E3779B97F4A7C15U) >> (64 - kPlaceBits);
    }

    static std::uint64_t pairAt(std::wstring_view text, std::size_t index) {
        std::uint64_t pair = 0;
        static_assert(sizeof pair == 2 * sizeof text[0]);
        std::memcpy(&pair, &text[index], sizeof pair);
        return pair;
    }

    std::array<Place, std::size_t{1} << kPlaceBits> places{};
};

class RxDictionaryImpl : public OdRxDictionary {
  public:
    // One at a time: an object's end may look for its neighbours, and finds those that are left.
    ~RxDictionaryImpl() override {
        while (!entries.empty()) {
            const auto last = extract(std::prev(entries.end()));
        }
    }

    OdRxObjectPtr getAt(const OdString& key) const override {
        if (const auto* entry = recent.find(key)) {
            return entry->second;
        }
        const auto found = entries.find(key);
        return found == entries.end() ? nullptr : found->second;
    }

    OdRxObjectPtr putAt(const OdString& key, OdRxObject* object) override {
        if (key.isEmpty()) {
            throw OdError_InvalidKey(key);
        }
        if (!object) {
            return remove(key);
        }
        const auto entry = entries.try_emplace(key).first;
        recent.add(*entry);
        return std::exchange(entry->second, OdRxObjectPtr(object));
    }

    OdRxObjectPtr remove(const OdString& key) override {
        const auto found = entries.find(key);
        return found == entries.end() ? nullptr : extract(found).mapped();
    }

    bool has(const OdString& key) const override { return entries.contains(key); }

    unsigned int numEntries() const override { return static_cast<unsigned int>(entries.size()); }

    OdStringArray keys() const override {
        OdStringArray all;
        for (const auto& [key, object] : entries) {
            all.append(key);
        }
        return all;
    }

  private:
    Entries::node_type extract(Entries::iterator entry) {
        recent.forget(entry->first);
        return entries.extract(entry);
    }

    Entries entries;
    RecentEntries recent;
};

OdRxObjectPtr makeDictionary() {
    return OdRxObjectImpl<RxDictionaryImpl>::createObject();
}

}  // namespace

ODRX_DEFINE_MEMBERS(OdRxDictionary, OdRxObject, makeDictionary, L"OdRxDictionary")
