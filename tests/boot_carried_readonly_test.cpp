// The read-only node of computed properties.
#include <utils/elementvalue.h>

#include <functional>

#include "boot_support.h"
#include "elementreadonlyobject.h"

namespace {

VoJsonPtr integer(int value) {
    return ElementValue::createObject(kElementInteger)->set_valueI(value);
}

class Counter : public ElementReadOnlyObject {
  public:
    const PropEntry* getPropMap(int& count) const override {
        static const PropEntry table[] = {
            {"reads",
             [](const ElementReadOnlyObject* self) {
                 return integer(++static_cast<const Counter*>(self)->reads);
             }},
            {"branch",
             [](const ElementReadOnlyObject*) {
                 VoJsonPtr branch = ElementValue::createObject(kElementObject);
                 branch->set_propertys("leaf", OdAnsiString("text"), false);
                 branch->set_propertyT("when", 1'000, false);
                 return branch;
             }},
            {"nothing", [](const ElementReadOnlyObject*) { return VoJsonPtr(); }},
            {"time",
             [](const ElementReadOnlyObject*) {
                 return ElementValue::createObject(kElementTime)->set_valueT(2'000);
             }},
        };
        count = 4;
        return table;
    }

    mutable int reads = 0;
};

class Writable : public Counter {
  public:
    int valueType() const override { return kElementObject; }
};

class NoObject : public Counter {
  public:
    int valueType() const override { return kElementText | kElementNoValue; }
};

class Unfilled : public ElementReadOnlyObject {
  public:
    const PropEntry* getPropMap(int& count) const override {
        static const PropEntry table[] = {{"hollow", nullptr}};
        count = 1;
        return table;
    }
};

TEST(ReadOnlyObject, ComputesItsPropertiesAnewForEachRead) {
    const Counter node;
    EXPECT_EQ(json(node.getProperty("reads")), "1");
    EXPECT_EQ(json(node.getProperty("reads")), "2");
    EXPECT_TRUE(node.getProperty("Reads").isNull());
    EXPECT_TRUE(node.getProperty("branch/leaf").isNull());

    OdAnsiString key;
    EXPECT_EQ(json(node.propertyAt(0, key)), "3");
    EXPECT_EQ(key, "reads");
    // There by name, but without a value it doesn't count.
    EXPECT_TRUE(node.propertyAt(2, key).isNull());
    EXPECT_EQ(key, "nothing");
    EXPECT_FALSE(node.hasProperty("nothing"));
    EXPECT_TRUE(node.hasProperty("branch"));

    EXPECT_TRUE(node.getItem(0).isNull());
    EXPECT_EQ(node.itemCount(), 0);
    EXPECT_EQ(node.timeValueOr(5), 0);
    EXPECT_EQ(node.timePropertyOr("time", 5), 2'000);
    EXPECT_EQ(node.timePropertyOr("nothing", 5), 5);
}

TEST(ReadOnlyObject, CopyHoldsTheValuesOfTheMoment) {
    Counter node;
    const VoJsonPtr copy = node.clone();
    ASSERT_TRUE(copy);
    EXPECT_EQ(json(copy), R"({"reads":1,"branch":{"leaf":"text","when":1000},"time":2000})");
    EXPECT_EQ(json(copy), R"({"reads":1,"branch":{"leaf":"text","when":1000},"time":2000})");
    EXPECT_TRUE(copy->set_propertyI("reads", 7, false));
    EXPECT_EQ(node.reads, 1);
}

TEST(ReadOnlyObject, ItsTypeAndTableDecide) {
    Writable writable;
    EXPECT_EQ(writable.set_valueI(1).get(), &writable);
    EXPECT_EQ(writable.set_values("x").get(), &writable);
    EXPECT_TRUE(writable.set_propertyI("reads", 1, false).isNull());

    const NoObject noObject;
    EXPECT_TRUE(noObject.getProperty("reads").isNull());
    OdAnsiString key;
    EXPECT_TRUE(noObject.propertyAt(0, key).isNull());
    EXPECT_EQ(noObject.timeValueOr(5), 5);

    const ElementReadOnlyObject bare;
    EXPECT_EQ(bare.propertyCount(), 0);
    EXPECT_TRUE(bare.getProperty("reads").isNull());
    const Unfilled unfilled;
    EXPECT_THROW(unfilled.getProperty("hollow"), std::bad_function_call);
}

}  // namespace
