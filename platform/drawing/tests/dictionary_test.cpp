#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "testsupport.h"

namespace {

class Dictionary : public RuntimeTest {
  protected:
    static OdRxObjectPtr newObject() { return OdRxDictionary::desc()->create(); }
    static OdRxDictionaryPtr newDictionary() { return OdRxDictionary::desc()->create(); }
};

// Looks for a neighbour while it goes.
class Leaver : public OdRxObject {
  public:
    ~Leaver() override {
        neighbourWasThere = dictionary->has(L"a") && dictionary->numEntries() == 1;
    }

    OdRxDictionary* dictionary = nullptr;
    static inline bool neighbourWasThere = false;
};

}  // namespace

TEST_F(Dictionary, HoldsOneReferenceToEachObject) {
    const OdRxDictionaryPtr dictionary = newDictionary();
    const OdRxObjectPtr first = newObject();
    const OdRxObjectPtr second = newObject();
    EXPECT_TRUE(dictionary->putAt(L"Core/Key", first.get()).isNull());
    EXPECT_EQ(first->numRefs(), 2);
    EXPECT_EQ(dictionary->putAt(L"Core/Key", second.get()), first);
    EXPECT_EQ(first->numRefs(), 1);
    EXPECT_EQ(dictionary->getAt(L"Core/Key"), second);
    EXPECT_EQ(dictionary->putAt(L"Core/Key", second.get()), second);
    EXPECT_EQ(second->numRefs(), 2);
    EXPECT_EQ(dictionary->keys().size(), 1u);
    EXPECT_EQ(dictionary->numEntries(), 1u);
    EXPECT_EQ(dictionary->remove(L"Core/Key"), second);
    EXPECT_EQ(second->numRefs(), 1);
}

TEST_F(Dictionary, AnswersNullForWhatIsNotThere) {
    const OdRxDictionaryPtr dictionary = newDictionary();
    dictionary->putAt(L"Key", newObject().get());
    EXPECT_TRUE(dictionary->getAt(L"key").isNull());
    EXPECT_TRUE(dictionary->remove(L"key").isNull());
    EXPECT_FALSE(dictionary->putAt(L"Key", nullptr).isNull());
    EXPECT_TRUE(dictionary->putAt(L"Key", nullptr).isNull());
    EXPECT_EQ(dictionary->numEntries(), 0u);
    EXPECT_EQ(raisedBy([&] { dictionary->putAt(L"", newObject().get()); }), eInvalidKey);
}

TEST_F(Dictionary, IsWholeWhileAnObjectGoes) {
    OdRxDictionaryPtr dictionary = newDictionary();
    dictionary->putAt(L"a", newObject().get());
    auto leaver = OdRxObjectImpl<Leaver>::createObject();
    leaver->dictionary = dictionary.get();
    dictionary->putAt(L"b", leaver.get());
    leaver.release();
    dictionary.release();
    EXPECT_TRUE(Leaver::neighbourWasThere);
}

// Against a map, with keys that are alike where the dictionary looks first: in their length, their
// middle and their end.
TEST_F(Dictionary, AnswersAsAMapDoes) {
    std::minstd_rand random(7);
    std::vector<OdString> keys = {L"k", L"ke", L"ek", L"key"};
    for (int made = 0; made < 60; ++made) {
        keys.push_back(OdString().format(L"%d/Services/%d/end", made % 10, made / 10));
        keys.push_back(OdString().format(L"Core/Key%d", made));
    }
    const OdRxDictionaryPtr dictionary = newDictionary();
    std::map<OdString, OdRxObjectPtr> expected;
    const auto held = [&expected](const OdString& key) {
        const auto found = expected.find(key);
        return found == expected.end() ? OdRxObjectPtr() : found->second;
    };
    for (int step = 0; step < 20'000; ++step) {
        const OdString& key = keys[random() % keys.size()];
        switch (random() % 4) {
            case 0: {
                const OdRxObjectPtr object = newObject();
                EXPECT_EQ(dictionary->putAt(key, object.get()), held(key));
                expected[key] = object;
                break;
            }
            case 1:
                EXPECT_EQ(dictionary->remove(key), held(key));
                expected.erase(key);
                break;
            default:
                EXPECT_EQ(dictionary->getAt(key), held(key));
                EXPECT_EQ(dictionary->has(key), expected.contains(key));
                break;
        }
    }
    EXPECT_GT(expected.size(), 20u);
    const OdStringArray names = dictionary->keys();
    ASSERT_EQ(names.size(), expected.size());
    for (unsigned int index = 0; index < names.size(); ++index) {
        EXPECT_EQ(names[index], std::next(expected.begin(), index)->first);
    }
}
