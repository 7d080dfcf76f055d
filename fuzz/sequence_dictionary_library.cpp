#include "sequence_dictionary_library.h"

#include <algorithm>

#include <global/log.h>

#include "core/voexports.h"

namespace sequence {

namespace {

// An object with a last will, of one of the classes with extensions.
class Testator : public OdRxObject {
  public:
    ~Testator() override { world->went(number); }

    OdRxClass* isA() const override { return world->classOf(number); }
    OdRxObject* queryX(const OdRxClass* protocolClass) const override {
        return answers ? OdRxObject::queryX(protocolClass) : nullptr;
    }

    DictionaryLibrary* world = nullptr;
    int number = 0;
    bool answers = true;
};

class NoPaths : public VoMainAppCallback {
  public:
    void initialize() override {}
    void uninitialize() override {}
    OdAnsiString queryAppDataPath() override { return ""; }
    OdAnsiString querySysFontPath() override { return ""; }
    OdAnsiString queryTempPath() override { return ""; }
    OdAnsiString queryDocumentPath() override { return ""; }
};

OdString textOf(std::size_t key) {
    OdString text;
    for (const char32_t character : keys()[key]) {
        text += static_cast<OdChar>(character);
    }
    return text;
}

int keyNumberOf(const OdString& key) {
    return keyNumber(std::u32string(key.view().begin(), key.view().end()));
}

VoAppService& service() {
    static OdStaticRxObject<VoAppService> object;
    return object;
}

}  // namespace

void DictionaryLibrary::make(std::size_t slot) {
    const int number = static_cast<int>(objects.size());
    if (role(number).isDictionary) {
        slots[slot] = OdRxDictionary::desc()->create();
    } else {
        const auto made = OdRxObjectImpl<Testator>::createObject();
        made->world = this;
        made->number = number;
        made->answers = role(number).answers;
        slots[slot] = made;
    }
    objects.push_back({.object = slots[slot].get()});
    addresses.push_back({slots[slot].get(), number});
}

int DictionaryLibrary::numberOf(const OdRxObject* object) const {
    if (!object) {
        return kNobody;
    }
    if (const auto* testator = dynamic_cast<const Testator*>(object)) {
        return testator->number;
    }
    const auto found =
        std::find_if(addresses.rbegin(), addresses.rend(),
                     [object](const Address& address) { return address.object == object; });
    return found == addresses.rend() ? kForeign : found->number;
}

// ---- life ----

void DictionaryLibrary::beginLife() {
    vo_set_print_log_level(5);
    g_appService = &service();
    odInitialize(g_appService);
    // A user file that is there and holds nothing.
    const char* arguments[] = {"vemo", "-u", "/dev/null", nullptr};
    NoPaths paths;
    g_appService->parseCommandLine(arguments, 3, &paths);
    addresses.push_back({odrxSysRegistry()->getAt(ODDB_SYSVARDICT).get(), kForeign});
    OdRxClass* parent = OdRxObject::desc();
    for (std::size_t which = 0; which < kChain; ++which) {
        chain[which] =
            newOdRxClass(OdString().format(L"Chain%d", static_cast<int>(which)), parent, nullptr);
        parent = chain[which];
    }
    for (std::size_t which = 0; which < kProtocols; ++which) {
        protocols[which] = newOdRxClass(OdString().format(L"Protocol%d", static_cast<int>(which)),
                                        OdRxObject::desc(), nullptr);
    }
}

void DictionaryLibrary::endLife() {
    if (!g_appService) {
        away();
    }
    for (std::size_t which = kChain + kProtocols; which-- > 0;) {
        endClass(which);
    }
    odUninitialize();
    g_appService = nullptr;
    service().releaseArbitraryDictionary();
}

void DictionaryLibrary::newLife() {
    endLife();
    beginLife();
}

// ---- dictionaries ----

int DictionaryLibrary::dictionaryAt(std::size_t door) const {
    return door < kFirstOwn ? kNobody : numberOf(dictionary(door));
}

OdRxDictionary* DictionaryLibrary::dictionary(std::size_t door) const {
    switch (door) {
        case kExported:
            return nullptr;
        case kServices:
            return g_appService ? g_appService->arbitraryDictionary().get() : nullptr;
        case kRegistry:
            return odrxSysRegistry().get();
        case kClasses:
            return odrxServiceDictionary().get();
        default:
            return isOwnDictionary(inSlot(door)) ? static_cast<OdRxDictionary*>(slots[door].get())
                                                 : going[door];
    }
}

OdRxObjectPtr DictionaryLibrary::at(std::size_t door, std::size_t key) const {
    return door == kExported ? vo_arbitDict_getservice(textOf(key))
                             : dictionary(door)->getAt(textOf(key));
}

int DictionaryLibrary::put(std::size_t door, std::size_t key, std::size_t slot) {
    if (door == kExported) {
        vo_arbitDict_regservice(textOf(key), slots[slot]);
        return kNobody;
    }
    const OdRxObjectPtr former = dictionary(door)->putAt(textOf(key), slots[slot].get());
    return numberOf(former.get());
}

int DictionaryLibrary::take(std::size_t door, std::size_t key) {
    if (door == kExported) {
        vo_arbitDict_clearservice(textOf(key));
        return kNobody;
    }
    const OdRxObjectPtr former = dictionary(door)->remove(textOf(key));
    return numberOf(former.get());
}

int DictionaryLibrary::look(std::size_t door, std::size_t key) {
    return numberOf(at(door, key).get());
}

bool DictionaryLibrary::has(std::size_t door, std::size_t key) {
    return door == kExported ? !at(door, key).isNull() : dictionary(door)->has(textOf(key));
}

std::vector<int> DictionaryLibrary::list(std::size_t door) {
    std::vector<int> all;
    if (door != kExported) {
        const OdStringArray listed = dictionary(door)->keys();
        std::transform(listed.begin(), listed.end(), std::back_inserter(all), keyNumberOf);
        all.resize(dictionary(door)->numEntries(), kNobody);
    }
    return all;
}

void DictionaryLibrary::keep(std::size_t door, std::size_t key, std::size_t slot) {
    const OdRxObjectPtr found = at(door, key);
    if (slots[slot].isNull()) {
        slots[slot] = found;
    }
}

int DictionaryLibrary::cast(std::size_t door, std::size_t key) {
    const OdRxObjectPtr found = at(door, key);
    if (!dynamic_cast<Testator*>(found.get())) {
        return kNobody;
    }
    const OdSmartPtr<Testator> testator(found);
    return testator->number;
}

// ---- references ----

void DictionaryLibrary::drop(std::size_t slot) {
    OdRxDictionary* const before = going[slot];
    if (isOwnDictionary(inSlot(slot)) && slots[slot]->numRefs() == 1) {
        going[slot] = static_cast<OdRxDictionary*>(slots[slot].get());
    }
    slots[slot].release();
    going[slot] = before;
}

// ---- classes ----

int DictionaryLibrary::extension(std::size_t carrier, std::size_t protocol) {
    const OdRxClass* carrying = carrierAt(carrier);
    return carrying && protocols[protocol] ? numberOf(carrying->getX(protocols[protocol]).get())
                                           : kNobody;
}

int DictionaryLibrary::extend(std::size_t carrier, std::size_t protocol, std::size_t slot) {
    OdRxClass* const carrying = carrierAt(carrier);
    if (!carrying) {
        return kNobody;
    }
    const OdRxObjectPtr former = carrying->addX(protocols[protocol], slots[slot].get());
    return numberOf(former.get());
}

int DictionaryLibrary::withdraw(std::size_t carrier, std::size_t protocol) {
    OdRxClass* const carrying = carrierAt(carrier);
    if (!carrying) {
        return kNobody;
    }
    const OdRxObjectPtr former = carrying->delX(protocols[protocol]);
    return numberOf(former.get());
}

int DictionaryLibrary::query(std::size_t protocol, std::size_t slot) {
    if (!dynamic_cast<const Testator*>(slots[slot].get())) {
        return kNobody;
    }
    const OdRxObjectPtr answer(slots[slot]->queryX(protocols[protocol]), kOdRxObjAttach);
    return numberOf(answer.get());
}

void DictionaryLibrary::endClass(std::size_t which) {
    OdRxClass*& ended = which < kChain ? chain[which] : protocols[which - kChain];
    deleteOdRxClass(std::exchange(ended, nullptr));
}

}  // namespace sequence
