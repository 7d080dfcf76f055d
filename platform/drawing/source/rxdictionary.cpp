#include "drawing/rxdictionary.h"

#include <map>

#include "drawing/rxobjectimpl.h"

namespace {

class RxDictionaryImpl : public OdRxDictionary {
  public:
    // One at a time: an object's end may look for its neighbours, and finds those that are left.
    ~RxDictionaryImpl() override {
        while (!entries.empty()) {
            const auto last = entries.extract(std::prev(entries.end()));
        }
    }

    OdRxObjectPtr getAt(const OdString& key) const override {
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
        return std::exchange(entries[key], OdRxObjectPtr(object));
    }

    OdRxObjectPtr remove(const OdString& key) override {
        const auto taken = entries.extract(key);
        return taken.empty() ? nullptr : taken.mapped();
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
    std::map<OdString, OdRxObjectPtr> entries;
};

OdRxObjectPtr makeDictionary() {
    return OdRxObjectImpl<RxDictionaryImpl>::createObject();
}

}  // namespace

ODRX_DEFINE_MEMBERS(OdRxDictionary, OdRxObject, makeDictionary, L"OdRxDictionary")
