// The read-only tree node by position: what it computes, what it refuses, and its one operation
// behind the fifty of every node.
#include <gtest/gtest.h>

#include "elementreadonlyobject.h"
#include "slotcall.h"
#include "treehelpers.h"

using slots::call;
using slots::ofNode;

namespace {

constexpr std::time_t kSomeTime = 1626322924;

class TwoProperties : public ElementReadOnlyObject {
  public:
    const PropEntry* getPropMap(int& count) const override {
        static const PropEntry entries[] = {
            {"name", [](const ElementReadOnlyObject*) { return tree::text("computed"); }},
            {"made",
             [](const ElementReadOnlyObject*) {
                 return ElementValue::createObject(kElementTime)->set_valueT(kSomeTime);
             }},
        };
        count = 2;
        return entries;
    }
};

using Key = const OdAnsiString&;
using Node = const VoJsonPtr&;

TEST(ReadOnlyNodeSlots, ComputesItsProperties) {
    const TwoProperties node;
    EXPECT_EQ(call<int()>(&node, ofNode(3)), 0x2002);
    EXPECT_EQ(call<VoJsonPtr(Key)>(&node, ofNode(4), "name")->strValue(), "computed");
    EXPECT_EQ(call<int()>(&node, ofNode(7)), 2);
    OdAnsiString key;
    EXPECT_TRUE((call<VoJsonPtr(int, OdAnsiString&)>(&node, ofNode(8), 1, key)));
    EXPECT_EQ(key, "made");
    EXPECT_TRUE(call<bool(Key)>(&node, ofNode(9), "made"));
    EXPECT_EQ(call<std::time_t(std::time_t)>(&node, ofNode(17), kSomeTime), 0);
    EXPECT_EQ((call<std::time_t(Key, std::time_t)>(&node, ofNode(18), "made", 1)), kSomeTime);
    EXPECT_EQ((call<std::time_t(Key, std::time_t)>(&node, ofNode(18), "absent", 1)), 1);
    int count = 0;
    EXPECT_EQ(call<const PropEntry*(int&)>(&node, ofNode(51), count), node.getPropMap(count));
}

TEST(ReadOnlyNodeSlots, RefusesChanges) {
    TwoProperties node;
    const VoJsonPtr text = tree::text("new");
    call<void()>(&node, ofNode(2));
    call<void()>(&node, ofNode(2));  // counts, but never goes
    EXPECT_TRUE(
        (call<VoJsonPtr(Key, Key, bool)>(&node, ofNode(19), "name", "new", false)).isNull());
    EXPECT_TRUE((call<VoJsonPtr(Key, Node)>(&node, ofNode(21), "name", text)).isNull());
    EXPECT_TRUE(call<VoJsonPtr(Key)>(&node, ofNode(33), "new").isNull());
    EXPECT_TRUE(call<VoJsonPtr(Key)>(&node, ofNode(39), "a/b").isNull());
    EXPECT_EQ(call<void*(Key)>(&node, ofNode(40), "name"), &node);
    EXPECT_EQ(call<int(Node)>(&node, ofNode(41), text), 0);
    EXPECT_EQ(call<int(int)>(&node, ofNode(43), 0), -1);
    EXPECT_EQ((call<int(Key, Node)>(&node, ofNode(46), "name", text)), 0);
    call<void()>(&node, ofNode(50));
    EXPECT_EQ(call<VoJsonPtr()>(&node, ofNode(49))->writeJson(),
              R"({"name":"computed","made":1626322924})");
}

}  // namespace
