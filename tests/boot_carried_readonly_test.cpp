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
    EXPECT_EQ(node.propertyCount(), 4);

    OdAnsiString key = "kept";
    EXPECT_TRUE(node.propertyAt(-1, key).isNull());
    EXPECT_TRUE(node.propertyAt(4, key).isNull());
    EXPECT_EQ(key, "kept");
    EXPECT_EQ(json(node.propertyAt(0, key)), "3");
    EXPECT_EQ(key, "reads");
    // There by name, but without a value it doesn't count.
    EXPECT_TRUE(node.propertyAt(2, key).isNull());
    EXPECT_EQ(key, "nothing");
    EXPECT_FALSE(node.hasProperty("nothing"));
    EXPECT_TRUE(node.hasProperty("branch"));

    EXPECT_EQ(node.valueType(), 0x2002);
    EXPECT_TRUE(node.getItem(0).isNull());
    EXPECT_EQ(node.itemCount(), 0);
    EXPECT_EQ(node.timeValueOr(5), 0);
    EXPECT_EQ(node.timePropertyOr("time", 5), 2'000);
    EXPECT_EQ(node.timePropertyOr("nothing", 5), 5);
}

TEST(ReadOnlyObject, RefusesEveryWrite) {
    Counter node;
    const VoJsonPtr value = integer(1);
    const std::vector<VoJsonPtr> answers{
        node.set_propertys("reads", OdAnsiString("x"), false),
        node.set_propertys("reads", "x", false),
        node.set_propertysW("reads", L"x", false),
        node.set_propertyJ("reads", value),
        node.set_propertyI("reads", 1, false),
        node.set_propertyL("reads", 1, false),
        node.set_propertyUL("reads", 1, false),
        node.set_propertyF("reads", 1, false),
        node.set_propertyT("reads", 1, false),
        node.set_propertyB("reads", true, false),
        node.set_propertyP("reads", &node, false),
        node.set_valueL(1),
        node.set_valueUL(1),
        node.set_valueF(1),
        node.set_valueB(true),
        node.set_values("x"),
        node.set_valuesW(L"x"),
        node.set_valueJ(value),
        node.set_valueI(1),
        node.set_valueT(1),
        node.set_valueP(&node),
        node.makePath("a/b"),
    };
    EXPECT_THAT(answers, testing::Each(VoJsonPtr()));
    EXPECT_EQ(node.removeProperty("reads"), &node);
    EXPECT_EQ(node.append(value), 0);
    EXPECT_EQ(node.insertItem(0, value), 0);
    EXPECT_EQ(node.removeItem(0), -1);
    EXPECT_EQ(node.setItem(0, value), -1);
    EXPECT_EQ(node.mergeProperty("reads", value), 0);
    EXPECT_EQ(node.propertyIndex("reads"), 0);
    node.SetDataI("reads", 1);
    node.copySubProperty(ElementValue::createObject(kElementObject), true);
    node.clear();
    EXPECT_EQ(node.propertyCount(), 4);
    EXPECT_EQ(node.reads, 0);
}

TEST(ReadOnlyObject, StandsInATreeWithoutBeingOwnedByIt) {
    Counter node;
    {
        const VoJsonPtr root = ElementValue::createObject(kElementObject);
        root->makePath("a")->set_propertyJ("node", VoJsonPtr(&node));
        EXPECT_EQ(json(root->quickGetProperty("a/node/branch/leaf")), R"("text")");
        EXPECT_TRUE(root->quickGetProperty("a/node/nothing/leaf").isNull());
        EXPECT_EQ(json(root->quickGetProperty("a/node/reads/")), "1");
        root->quickGetProperty("a")->removeProperty("node");
    }
    for (int count = 0; count < 5; ++count) {
        node.release();
    }
    EXPECT_EQ(json(node.getProperty("reads")), "2");
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
