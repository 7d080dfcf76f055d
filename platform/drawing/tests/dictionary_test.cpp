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
