#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "utils/elementvalue.h"

namespace {

template <class T>
constexpr T kLeast = std::numeric_limits<T>::min();
template <class T>
constexpr T kMost = std::numeric_limits<T>::max();

VoJsonPtr newObject() {
    return ElementValue::createObject(kElementObject);
}
VoJsonPtr newArray() {
    return ElementValue::createObject(kElementArray);
}

std::string keysOf(const VoJsonPtr& object) {
    std::string keys;
    for (int index = 0; index < object->propertyCount(); ++index) {
        OdAnsiString key;
        object->propertyAt(index, key);
        keys += key.str() + ' ';
    }
    return keys;
}

VoJsonPtr numbered(int count) {
    VoJsonPtr object = newObject();
    for (int index = 0; index < count; ++index) {
        object->set_propertyI(std::to_string(index).c_str(), index, false);
    }
    return object;
}

struct CountedObject : OdRxObject {
    void addRef() override { ++references; }
    void release() override { --references; }
    int references = 0;
};

}  // namespace

TEST(ElementValue, KindsAreMadeEmpty) {
    for (const int kind :
         {kElementArray, kElementObject, kElementText, kElementInteger, kElementUnsigned,
          kElementReal, kElementBoolean, kElementPointer, kElementTime}) {
        EXPECT_EQ(ElementValue::createObject(kind)->valueType(), kind);
    }
    EXPECT_EQ(ElementValue::createObject(kElementNull)->valueType(),
              kElementNull | kElementNoValue);
    for (const int kind : {0, 3, 12, -1, kElementNoValue | kElementText}) {
        EXPECT_TRUE(ElementValue::createObject(kind).isNull()) << kind;
    }
}

TEST(ElementValue, ReplacedKeyKeepsItsPlaceAndRemovalKeepsOrder) {
    const VoJsonPtr object = newObject();
    for (const char* key : {"b", "a", "", "a/b", "c"}) {
        object->set_propertyI(key, 1, false);
    }
    EXPECT_TRUE(object->set_propertys("a", "text", false));
    EXPECT_EQ(keysOf(object), "b a  a/b c ");
    EXPECT_EQ(object->getProperty("a")->strValue(), "text");
    EXPECT_EQ(object->propertyIndex("a/b"), 4);

    EXPECT_EQ(object->removeProperty("a"), object.get());
    EXPECT_EQ(object->removeProperty("absent"), object.get());
    EXPECT_EQ(keysOf(object), "b  a/b c ");
    EXPECT_FALSE(object->hasProperty("a"));
    EXPECT_EQ(object->propertyIndex("a"), 0);
    OdAnsiString key("unchanged");
    EXPECT_TRUE(object->propertyAt(4, key).isNull());
    EXPECT_TRUE(object->propertyAt(-1, key).isNull());
    EXPECT_EQ(key, "unchanged");
}

TEST(ElementValue, LargeObjectFindsEveryKeyThroughReplacementAndRemoval) {
    constexpr int count = 1000;
    const VoJsonPtr object = numbered(count);
    for (int index = 0; index < count; index += 3) {
        object->removeProperty(std::to_string(index).c_str());
    }
    object->set_propertyI("0", -1, false);
    for (int index = 1, place = 0; index < count; ++index) {
        const std::string key = std::to_string(index);
        ASSERT_EQ(object->propertyIndex(key.c_str()), index % 3 == 0 ? 0 : ++place) << key;
        ASSERT_EQ(object->hasProperty(key.c_str()), index % 3 != 0);
    }
    EXPECT_EQ(object->propertyIndex("0"), object->propertyCount());
}

TEST(ElementValue, RandomUseAgreesWithAPlainList) {
    std::vector<OdAnsiString> keys = {"", "a", "b", "ab", "ba", "bab", "aab"};
    for (int index = 0; index < 30; ++index) {
        keys.emplace_back(OdAnsiString("key" + std::to_string(index)));
    }
    constexpr unsigned seed = 14;
    std::mt19937 random(seed);
    const VoJsonPtr object = newObject();
    std::vector<std::pair<OdAnsiString, VoJsonPtr>> plain;
    const auto placeOf = [&plain](const OdAnsiString& key) {
        return std::find_if(plain.begin(), plain.end(),
                            [&key](const auto& member) { return member.first == key; });
    };
    for (int round = 0; round < 4000; ++round) {
        // Longer and shorter by turns, so that the list is searched in both ways.
        const bool grows = round / 500 % 2 == 0;
        const OdAnsiString& key = keys[random() % keys.size()];
        const auto place = placeOf(key);
        if (random() % 4 == (grows ? 0u : 1u) || (!grows && random() % 2 == 0)) {
            object->removeProperty(key);
            if (place != plain.end()) {
                plain.erase(place);
            }
        } else {
            const VoJsonPtr node = object->set_propertyI(key, round, false);
            if (place != plain.end()) {
                place->second = node;
            } else {
                plain.emplace_back(key, node);
            }
        }
        const OdAnsiString& asked = keys[random() % keys.size()];
        const auto found = placeOf(asked);
        const bool isThere = found != plain.end();
        ASSERT_EQ(object->getProperty(asked), isThere ? found->second : VoJsonPtr()) << seed;
        ASSERT_EQ(object->propertyIndex(asked), isThere ? found - plain.begin() + 1 : 0) << seed;
        ASSERT_EQ(static_cast<std::size_t>(object->propertyCount()), plain.size()) << seed;
    }
}

TEST(ElementValue, ArraysInsertReplaceAndRemove) {
    const VoJsonPtr array = newArray();
    const VoJsonPtr a = newObject();
    const VoJsonPtr b = newObject();
    const VoJsonPtr c = newObject();
    EXPECT_EQ(array->append(a), 1);
    EXPECT_EQ(array->insertItem(0, b), 2);
    EXPECT_EQ(array->insertItem(2, c), 3);
    EXPECT_EQ(array->insertItem(4, a), 0);
    EXPECT_EQ(array->append(nullptr), 0);
    EXPECT_EQ(array(0), b);
    EXPECT_EQ(array(2), c);
    EXPECT_EQ(array->setItem(1, c), 1);
    EXPECT_EQ(array->setItem(3, c), -1);
    EXPECT_EQ(array->setItem(0, nullptr), -1);
    EXPECT_EQ(array->removeItem(0), 0);
    EXPECT_EQ(array->removeItem(2), -1);
    EXPECT_EQ(array(0), c);
    EXPECT_EQ(array.ArrayCount(), 2);
    EXPECT_TRUE(array(2).isNull());
    EXPECT_TRUE(array(-1).isNull());
    EXPECT_EQ(VoJsonPtr().ArrayCount(), 0);
    EXPECT_TRUE(VoJsonPtr()(0).isNull());
    array->clear();
    EXPECT_EQ(array->itemCount(), 0);
    EXPECT_EQ(array->valueType(), kElementArray);
}

TEST(ElementValue, OperationsOnTheWrongKindDoNothing) {
    const VoJsonPtr array = newArray();
    const VoJsonPtr object = numbered(1);
    EXPECT_TRUE(array->set_propertyI("key", 1, false).isNull());
    EXPECT_TRUE(array->set_propertyJ("key", object).isNull());
    EXPECT_TRUE(array->set_propertys("key", static_cast<const char*>(nullptr), false).isNull());
    EXPECT_TRUE(object->set_propertyJ("key", nullptr).isNull());
    EXPECT_TRUE(object->set_valueI(1).isNull());
    EXPECT_TRUE(object->set_value_rxobject_ptr(nullptr).isNull());
    EXPECT_TRUE(array->set_valueJ(object->getProperty("0")).isNull());
    EXPECT_TRUE(object->getProperty("0")->set_valueJ(array).isNull());
    EXPECT_EQ(object->append(array), 0);
    EXPECT_EQ(object.ArrayCount(), 0);
    EXPECT_EQ(array->propertyCount(), 0);
    EXPECT_EQ(object->getProperty("0")->longlongValue(), 0);
    EXPECT_EQ(keysOf(object), "0 ");
}

TEST(ElementValue, NumbersConvertAtTheNearerEndOfTheRange) {
    const VoJsonPtr node = ElementValue::createObject(kElementNull);
    node->set_valueL(-1);
    EXPECT_EQ(node->ulonglongValue(), 0u);
    EXPECT_EQ(node->floatValue(), -1.0);
    node->set_valueUL(kMost<std::uint64_t>);
    EXPECT_EQ(node->longlongValue(), kMost<std::int64_t>);
    node->set_valueF(-2.9);
    EXPECT_EQ(node->longlongValue(), -2);
    node->set_valueF(9223372036854775808.0);
    EXPECT_EQ(node->longlongValue(), kMost<std::int64_t>);
    EXPECT_EQ(node->ulonglongValue(), std::uint64_t{1} << 63);
    node->set_valueF(-1e300);
    EXPECT_EQ(node->longlongValue(), kLeast<std::int64_t>);
    EXPECT_EQ(node->timeValue(), kLeast<std::time_t>);
    node->set_valueF(18446744073709551616.0);
    EXPECT_EQ(node->ulonglongValue(), kMost<std::uint64_t>);
    node->set_valueF(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(node->longlongValue(), 0);
}

TEST(ElementValue, OtherKindsReadAsNothing) {
    const VoJsonPtr node = ElementValue::createObject(kElementNull);
    node->set_valueI(1);
    EXPECT_TRUE(node->strValue().isEmpty());
    EXPECT_FALSE(node->boolValue());
    node->set_valueB(true);
    EXPECT_TRUE(node->strValue().isEmpty());
    EXPECT_EQ(node->longlongValue(), 0);
    node->set_values("12");
    EXPECT_EQ(node->longlongValue(), 0);
    EXPECT_EQ(node->floatValue(), 0.0);
    int anything = 0;
    node->set_valueP(&anything);
    EXPECT_EQ(node->ptrValue(), &anything);
    EXPECT_EQ(node->ulonglongValue(), 0u);
}

TEST(ElementValue, DefaultsHoldWhereThereIsNoValue) {
    const VoJsonPtr object = newObject();
    const VoJsonPtr text = object->set_propertys("text", static_cast<const char*>(nullptr), false);
    EXPECT_EQ(text->valueType(), kElementText | kElementNoValue);
    EXPECT_TRUE(object->hasProperty("text"));
    EXPECT_EQ(object->timePropertyOr("text", 5), 5);
    EXPECT_EQ(object->timePropertyOr("absent", 5), 5);
    object->set_propertyT("time", 7, false)->set_valueT(8);
    EXPECT_EQ(object->timePropertyOr("time", 5), 8);
    object->getProperty("time")->clear();
    EXPECT_EQ(object->timePropertyOr("time", 5), 5);
    text->set_values("usable");
    EXPECT_EQ(text->valueType(), kElementText);
}

TEST(ElementValue, GetDataLeavesWhatItCantAnswer) {
    const VoJsonPtr object = newObject();
    object->SetDataI("int", -3);
    object->set_propertyL("long", kMost<std::int64_t>, false);
    object->set_propertys("text", "3", false);
    object->SetDataJ("int node", object->getProperty("int"));
    int value = 42;
    for (const char* key : {"absent", "long", "text"}) {
        object->GetDataI(key, value);
        EXPECT_EQ(value, 42) << key;
    }
    object->GetDataI("int node", value);
    EXPECT_EQ(value, -3);
    VoJsonPtr node = object;
    object->GetDataJ("absent", node);
    EXPECT_TRUE(node.isNull());
}

TEST(ElementValue, StoredNodesAreSharedNotCopied) {
    const VoJsonPtr object = newObject();
    const VoJsonPtr array = newArray();
    EXPECT_EQ(object->set_propertyJ("list", array), array);
    array->append(newObject());
    EXPECT_EQ(object->getProperty("list").ArrayCount(), 1);
    EXPECT_EQ(object->set_propertysW("wide", L"\u5bbd\U0001F600", false)->strValue(), "宽😀");
}

TEST(ElementValue, OnlyObjectPointersHoldAReference) {
    CountedObject counted;
    {
        const VoJsonPtr object = newObject();
        const VoJsonPtr plain = object->set_propertyP("plain", &counted, false);
        EXPECT_EQ(counted.references, 0);
        EXPECT_EQ(plain->ptrValue(), &counted);
        const VoJsonPtr holder = object->set_propertyP("holder", nullptr, false);
        EXPECT_EQ(holder->set_value_rxobject_ptr(&counted), holder);
        EXPECT_EQ(holder->ptrValue(), static_cast<OdRxObject*>(&counted));
        EXPECT_EQ(counted.references, 1);
        const VoJsonPtr copy = object->clone();
        EXPECT_EQ(counted.references, 2);
        EXPECT_EQ(copy->getProperty("holder")->ptrValue(), static_cast<OdRxObject*>(&counted));
        plain->set_valueJ(holder);
        EXPECT_EQ(counted.references, 3);
        holder->set_valueI(1);
        EXPECT_EQ(counted.references, 2);
    }
    EXPECT_EQ(counted.references, 0);
}

TEST(ElementValue, ReleaseMayLookAtTheTree) {
    struct Visitor : CountedObject {
        void release() override {
            CountedObject::release();
            counted = tree->propertyCount() + tree->getProperty("list").ArrayCount();
        }
        VoJsonPtr tree;
        int counted = -1;
    };
    Visitor visitor;
    visitor.tree = numbered(20);
    const VoJsonPtr list = visitor.tree->set_propertyJ("list", newArray());
    list->append(ElementValue::createObject(kElementPointer));
    list->append(newObject());
    list(0)->set_value_rxobject_ptr(&visitor);
    visitor.tree->set_propertyP("0", nullptr, false)->set_value_rxobject_ptr(&visitor);

    visitor.tree->removeProperty("0");
    EXPECT_EQ(visitor.counted, 20 + 2);
    list->removeItem(0);
    EXPECT_EQ(visitor.counted, 20 + 1);
    visitor.tree->set_propertyP("1", nullptr, false)->set_value_rxobject_ptr(&visitor);
    visitor.tree->clear();
    EXPECT_EQ(visitor.counted, 0);
    EXPECT_EQ(visitor.references, 0);
}

TEST(ElementValue, TreeOfAMillionLevelsIsDestroyed) {
    for (const int kind : {kElementArray, kElementObject}) {
        VoJsonPtr root = ElementValue::createObject(kElementText);
        for (int level = 0; level < 1'000'000; ++level) {
            const VoJsonPtr parent = ElementValue::createObject(kind);
            ASSERT_TRUE(kind == kElementArray ? parent->append(root) == 1
                                              : parent->set_propertyJ("k", root) == root);
            root = parent;
        }
        root->clear();
        EXPECT_EQ(root->itemCount() + root->propertyCount(), 0);
    }
}
