// Tree nodes by position: the library's own nodes, and a node of this module in the library's
// hands.
#include <cstdint>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

#include "slotchecks.h"
#include "slotlibrary.h"
#include "slottreenode.h"

using slots::callNode;
using slots::FixedNode;
using slots::kArrayNode;
using slots::kindOf;
using slots::kObjectNode;
using slots::kTextNode;
using slots::NodePtr;

namespace {

using Key = const OdAnsiString&;
using Node = const NodePtr&;

constexpr std::int64_t kBeyondInt = -(std::int64_t{1} << 40);
constexpr std::uint64_t kBeyondSigned = (std::uint64_t{1} << 63) + 5;
constexpr std::time_t kSomeTime = 1626322924;

// A new empty node of the library's own, in the user's tree.
NodePtr newNode(const char* key, int kind) {
    return vo_user_config(key, kind);
}

NodePtr child(Node object, const char* key) {
    return callNode<NodePtr(Key)>(object, 4, key);
}

std::string textOf(Node node) {
    return callNode<OdAnsiString()>(node, 10).str();
}

NodePtr setText(Node object, const char* key, const char* text) {
    return callNode<NodePtr(Key, Key, bool)>(object, 19, key, text, false);
}

std::string jsonOf(Node node) {
    const OdStreamBufPtr stream = newOdMemoryStream();
    EXPECT_TRUE(callNode<bool(OdSmartPtr<OdStreamBuf>)>(node, 45, stream));
    std::string text(stream->length(), ' ');
    stream->seek(0, kSeekFromStart);
    stream->getBytes(text.data(), static_cast<std::uint32_t>(text.size()));
    return text;
}

// The object's keys in its order, by number of keys and key by index.
std::string keysOf(Node object) {
    std::string keys;
    for (int index = 0; index < callNode<int()>(object, 7); ++index) {
        OdAnsiString key;
        EXPECT_TRUE(callNode<NodePtr(int, OdAnsiString&)>(object, 8, index, key));
        keys += key.str() + ' ';
    }
    return keys;
}

// What the typed readers give, each where the kind is its own.
void expectTypedChildren(Node object) {
    EXPECT_EQ(textOf(child(object, "text")), "words");
    EXPECT_EQ(textOf(child(object, "wide")), "\xe5\xae\xbd");
    EXPECT_EQ(callNode<std::int64_t()>(child(object, "int"), 11), -7);
    EXPECT_EQ(callNode<std::int64_t()>(child(object, "long"), 11), kBeyondInt);
    EXPECT_EQ(callNode<std::uint64_t()>(child(object, "unsigned"), 12), kBeyondSigned);
    EXPECT_EQ(callNode<double()>(child(object, "real"), 14), 2.75);
    EXPECT_EQ(callNode<std::time_t()>(child(object, "time"), 16), kSomeTime);
    EXPECT_TRUE(callNode<bool()>(child(object, "bool"), 13));
    EXPECT_EQ(callNode<void*()>(child(object, "pointer"), 15), &kSomeTime);
}

}  // namespace

SLOT_CHECK(checkNodeSettersByKey) {
    const NodePtr object = newNode("slots", kObjectNode);
    ASSERT_EQ(kindOf(object), kObjectNode);
    const NodePtr text = setText(object, "text", "words");
    callNode<NodePtr(Key, const OdString&, bool)>(object, 20, "wide", L"\u5bbd", false);
    callNode<NodePtr(Key, Node)>(object, 21, "node", text);
    callNode<NodePtr(Key, int, bool)>(object, 22, "int", -7, false);
    callNode<NodePtr(Key, std::int64_t, bool)>(object, 23, "long", kBeyondInt, false);
    callNode<NodePtr(Key, std::uint64_t, bool)>(object, 24, "unsigned", kBeyondSigned, false);
    callNode<NodePtr(Key, double, bool)>(object, 25, "real", 2.75, false);
    callNode<NodePtr(Key, std::time_t, bool)>(object, 26, "time", kSomeTime, false);
    callNode<NodePtr(Key, bool, bool)>(object, 27, "bool", true, false);
    callNode<NodePtr(Key, const void*, bool)>(object, 28, "pointer", &kSomeTime, false);

    EXPECT_EQ(keysOf(object), "text wide node int long unsigned real time bool pointer ");
    EXPECT_EQ(kindOf(child(object, "text")), kTextNode);
    EXPECT_EQ(child(object, "node").get(), text.get());
    expectTypedChildren(object);
    EXPECT_EQ(kindOf(child(object, "long")), kindOf(child(object, "int")));
    EXPECT_NE(kindOf(child(object, "time")), kindOf(child(object, "int")));
    EXPECT_EQ(callNode<std::int64_t()>(child(object, "unsigned"), 11),
              std::numeric_limits<std::int64_t>::max());
}

SLOT_CHECK(checkNodeOwnValue) {
    const NodePtr object = newNode("slots", kObjectNode);
    const NodePtr other = setText(object, "other", "taken over");
    const NodePtr node = setText(object, "node", "before");
    const auto returnsItself = [&](Node result) { EXPECT_EQ(result.get(), node.get()); };

    returnsItself(callNode<NodePtr(std::int64_t)>(node, 29, kBeyondInt));
    EXPECT_EQ(callNode<std::int64_t()>(node, 11), kBeyondInt);
    const int longKind = kindOf(node);
    returnsItself(callNode<NodePtr(std::uint64_t)>(node, 30, kBeyondSigned));
    EXPECT_EQ(callNode<std::uint64_t()>(node, 12), kBeyondSigned);
    returnsItself(callNode<NodePtr(double)>(node, 31, 2.75));
    EXPECT_EQ(callNode<double()>(node, 14), 2.75);
    returnsItself(callNode<NodePtr(bool)>(node, 32, true));
    EXPECT_TRUE(callNode<bool()>(node, 13));
    returnsItself(callNode<NodePtr(Key)>(node, 33, "words"));
    EXPECT_EQ(textOf(node), "words");
    returnsItself(callNode<NodePtr(const OdString&)>(node, 34, L"\u5bbd"));
    EXPECT_EQ(textOf(node), "\xe5\xae\xbd");
    returnsItself(callNode<NodePtr(Node)>(node, 35, other));
    EXPECT_EQ(textOf(node), "taken over");
    returnsItself(callNode<NodePtr(int)>(node, 36, -7));
    EXPECT_EQ(callNode<std::int64_t()>(node, 11), -7);
    EXPECT_EQ(kindOf(node), longKind);
    returnsItself(callNode<NodePtr(std::time_t)>(node, 37, kSomeTime));
    EXPECT_EQ(callNode<std::time_t()>(node, 16), kSomeTime);
    EXPECT_NE(kindOf(node), longKind);
    returnsItself(callNode<NodePtr(const void*)>(node, 38, &kSomeTime));
    EXPECT_EQ(callNode<void*()>(node, 15), &kSomeTime);
}

SLOT_CHECK(checkNodeDefaults) {
    const NodePtr nothing = vo_sys_config("Nothing");
    ASSERT_TRUE(nothing);
    EXPECT_EQ(callNode<std::time_t(std::time_t)>(nothing, 17, kSomeTime), kSomeTime);

    const NodePtr object = newNode("slots", kObjectNode);
    const NodePtr time =
        callNode<NodePtr(Key, std::time_t, bool)>(object, 26, "time", kSomeTime, false);
    EXPECT_EQ(callNode<std::time_t(std::time_t)>(time, 17, 1), kSomeTime);
    EXPECT_EQ(callNode<std::time_t(Key, std::time_t)>(object, 18, "time", 1), kSomeTime);
    EXPECT_EQ(callNode<std::time_t(Key, std::time_t)>(object, 18, "absent", 1), 1);
}

SLOT_CHECK(checkArrayNode) {
    const NodePtr array = newNode("slots", kArrayNode);
    ASSERT_EQ(kindOf(array), kArrayNode);
    const NodePtr a = FixedNode::text("a");
    const NodePtr b = FixedNode::text("b");
    const NodePtr c = FixedNode::text("c");
    const auto itemAt = [&](int index) { return callNode<NodePtr(int)>(array, 5, index).get(); };

    EXPECT_EQ(callNode<int(Node)>(array, 41, a), 1);
    EXPECT_EQ(callNode<int(Node)>(array, 41, b), 2);
    EXPECT_EQ(callNode<int(int, Node)>(array, 42, 0, c), 3);
    EXPECT_EQ(callNode<int()>(array, 6), 3);
    EXPECT_EQ(itemAt(0), c.get());
    EXPECT_EQ(callNode<int(int)>(array, 43, 1), 1);
    EXPECT_EQ(itemAt(1), b.get());
    EXPECT_EQ(callNode<int(int, Node)>(array, 44, 1, a), 1);
    EXPECT_EQ(itemAt(1), a.get());
    EXPECT_EQ(callNode<int()>(array, 6), 2);
    EXPECT_EQ(jsonOf(array), R"(["c","a"])");
}

SLOT_CHECK(checkObjectNode) {
    const NodePtr object = newNode("slots", kObjectNode);
    const NodePtr made = callNode<NodePtr(Key)>(object, 39, "a/b");
    EXPECT_EQ(made.get(), child(child(object, "a"), "b").get());
    setText(made, "old", "kept");

    const NodePtr merged =
        FixedNode::object({{"b", FixedNode::object({{"old", FixedNode::text("dropped")},
                                                    {"new", FixedNode::text("added")}})}});
    EXPECT_EQ(callNode<int(Key, Node)>(object, 46, "a", merged), 1);
    EXPECT_EQ(jsonOf(object), R"({"a":{"b":{"old":"kept","new":"added"}}})");
    EXPECT_EQ(callNode<int(Key)>(made, 47, "new"), 2);
    EXPECT_TRUE(callNode<bool(Key)>(made, 9, "new"));

    const NodePtr copy = callNode<NodePtr()>(made, 49);
    EXPECT_NE(copy.get(), made.get());
    EXPECT_EQ(callNode<void*(Key)>(made, 40, "old"), made.get());
    EXPECT_EQ(jsonOf(made), R"({"new":"added"})");
    EXPECT_EQ(jsonOf(copy), R"({"old":"kept","new":"added"})");

    setText(copy, "new", "replaced");
    callNode<void(Node, bool)>(made, 48, copy, false);
    EXPECT_EQ(jsonOf(made), R"({"new":"added","old":"kept"})");
    callNode<void(Node, bool)>(made, 48, copy, true);
    EXPECT_EQ(textOf(child(made, "new")), "replaced");
    callNode<void()>(made, 50);
    EXPECT_EQ(callNode<int()>(made, 7), 0);
}

// A node of this module stands in an array, and goes with it: that shows when the array goes.
SLOT_CHECK(checkNodeCounting) {
    const NodePtr witness = FixedNode::text("still here");
    const auto& counted = *static_cast<const FixedNode*>(witness.get());
    NodePtr array = callNode<NodePtr()>(newNode("slots", kArrayNode), 49);
    const void* raw = array.get();
    callNode<int(Node)>(array, 41, witness);
    EXPECT_EQ(counted.countOfReferences(), 2);

    slots::call<void()>(raw, slots::ofNode(1));
    array = NodePtr();
    EXPECT_EQ(counted.countOfReferences(), 2);
    slots::call<void()>(raw, slots::ofNode(2));
    EXPECT_EQ(counted.countOfReferences(), 1);
}

SLOT_CHECK(checkProvidedNode) {
    const NodePtr object = newNode("slots", kObjectNode);
    const NodePtr provided = FixedNode::object(
        {{"colour", FixedNode::text("red")},
         {"sizes", FixedNode::array({FixedNode::text("S"), FixedNode::text("M")})}});
    callNode<NodePtr(Key, Node)>(object, 21, "provided", provided);

    EXPECT_EQ(textOf(vo_user_config("slots/provided/colour", 0)), "red");
    EXPECT_EQ(textOf(vo_user_config("slots/provided/sizes/1", 0)), "M");
    EXPECT_EQ(vo_user_config("slots/provided/absent", 0).get(), nullptr);
    const std::string json = R"({"provided":{"colour":"red","sizes":["S","M"]}})";
    EXPECT_EQ(jsonOf(object), json);
    EXPECT_EQ(jsonOf(callNode<NodePtr()>(object, 49)), json);
}
