// Paths, copies and merges of whole trees.
#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "computednode.h"
#include "utils/elementvalue.h"

namespace {

VoJsonPtr newObject() {
    return ElementValue::createObject(kElementObject);
}

/// So many arrays, one in the other.
VoJsonPtr nested(int levels) {
    VoJsonPtr node = ElementValue::createObject(kElementArray);
    for (int level = 1; level < levels; ++level) {
        const VoJsonPtr parent = ElementValue::createObject(kElementArray);
        parent->append(node);
        node = parent;
    }
    return node;
}

}  // namespace

TEST(ElementPath, WalksThroughObjectsAndArrays) {
    const VoJsonPtr root = newObject();
    const VoJsonPtr list = ElementValue::createObject(kElementArray);
    const VoJsonPtr item = newObject();
    list->append(newObject());
    list->append(item);
    root->makePath("a/b")->set_propertyJ("list", list);
    const VoJsonPtr leaf = item->set_propertyI("leaf", 1, false);

    EXPECT_EQ(root->quickGetProperty("a/b/list/1/leaf"), leaf);
    EXPECT_EQ(root->quickGetProperty("a/b/list/1/leaf/"), leaf);
    for (const char* path : {"a/x/list", "a/b/list/2", "a/b/list/-1", "a/b/list/1x", "a/b/list/",
                             "a/b/list/1/leaf/0", "/a", "a//b", "", "/"}) {
        const bool isList = std::string(path) == "a/b/list/";
        EXPECT_EQ(root->quickGetProperty(path), isList ? list : VoJsonPtr()) << path;
    }
    EXPECT_EQ(root->writeJson(), R"({"a":{"b":{"list":[{},{"leaf":1}]}}})");
}

TEST(ElementPath, RandomPathsLeadWhereTheirStepsLead) {
    constexpr unsigned seed = 15;
    std::mt19937 random(seed);
    const std::string steps[] = {"", "a", "b", "0", "1", "01", "-1", "1x"};
    const auto anyStep = [&] { return steps[random() % std::size(steps)]; };
    const VoJsonPtr root = newObject();
    std::vector<VoJsonPtr> nodes{root};
    for (int count = 0; count < 60; ++count) {
        const VoJsonPtr parent = nodes[random() % nodes.size()];
        const int kinds[] = {kElementObject, kElementArray, kElementText};
        const VoJsonPtr node = ElementValue::createObject(kinds[random() % std::size(kinds)]);
        if (parent->append(node) > 0 || parent->set_propertyJ(OdAnsiString(anyStep()), node)) {
            nodes.push_back(node);
        }
    }
    int found = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string path;
        VoJsonPtr node = root;
        for (auto left = 1 + random() % 4; left > 0; --left) {
            const std::string step = anyStep();
            path += step + (left > 1 ? "/" : "");
            const bool isArray = node && node->valueType() == kElementArray;
            const bool isIndex = step == "0" || step == "1" || step == "01";
            node = !node     ? node
                   : isArray ? node->getItem(isIndex ? std::stoi(step) : -1)
                             : node->getProperty(OdAnsiString(step));
        }
        // A "/" at the end is ignored, so that an empty last step needs one of its own.
        path += path.ends_with('/') || random() % 2 ? "/" : "";
        ASSERT_EQ(root->quickGetProperty(OdAnsiString(path)), node) << path << ", seed " << seed;
        found += node ? 1 : 0;
    }
    EXPECT_GT(found, 100);
}

TEST(ElementPath, EmptyStepsAreEmptyKeys) {
    const VoJsonPtr root = newObject();
    const VoJsonPtr empty = root->makePath("");
    EXPECT_EQ(root->getProperty(""), empty);
    EXPECT_EQ(root->quickGetProperty(""), empty);
    const VoJsonPtr below = root->makePath("/a/");
    EXPECT_EQ(empty->getProperty("a"), below);
    EXPECT_EQ(root->quickGetProperty("/a"), below);
}

TEST(ElementPath, MakePathKeepsWhatIsThereAndStopsAtOtherKinds) {
    const VoJsonPtr root = newObject();
    const VoJsonPtr made = root->makePath("a/b/");
    EXPECT_EQ(root->makePath("a/b"), made);
    made->set_propertyI("leaf", 1, false);
    EXPECT_TRUE(root->makePath("a/b/leaf/c").isNull());
    EXPECT_TRUE(root->makePath("a/b/leaf").isNull());
    EXPECT_TRUE(made->getProperty("leaf")->makePath("c").isNull());
    EXPECT_EQ(root->writeJson(), R"({"a":{"b":{"leaf":1}}})");
}

TEST(ElementPath, AsksComputedNodes) {
    const ComputedNode computed;
    {
        const VoJsonPtr root = newObject();
        root->makePath("Runtime")->set_propertyJ("Fonts", const_cast<ComputedNode*>(&computed));
        const VoJsonPtr asked = root->quickGetProperty("Runtime/Fonts/size/asked");
        ASSERT_TRUE(asked);
        EXPECT_EQ(asked->longlongValue(), 1);
        EXPECT_TRUE(root->quickGetProperty("Runtime/Fonts/absent/asked").isNull());
        EXPECT_EQ(computed.quickGetProperty("size/asked")->longlongValue(), 3);
        EXPECT_TRUE(root->makePath("Runtime/Fonts/new").isNull());
    }
    EXPECT_EQ(computed.references, 1);
}

TEST(ElementCopy, CloneSharesNothing) {
    const VoJsonPtr root = newObject();
    root->set_propertyUL("unsigned", ~std::uint64_t{0}, false);
    root->set_propertyT("time", 9, false);
    root->set_propertys("none", static_cast<const char*>(nullptr), false);
    root->makePath("a/b")->set_propertyJ("list", nested(2));
    const OdAnsiString before = root->writeJson();
    const VoJsonPtr copy = root->clone();
    EXPECT_EQ(copy->writeJson(), before);
    EXPECT_EQ(copy->getProperty("time")->valueType(), kElementTime);
    EXPECT_EQ(copy->getProperty("none")->valueType(), kElementText | kElementNoValue);

    copy->quickGetProperty("a/b/list")->append(newObject());
    copy->getProperty("time")->set_valueI(1);
    copy->removeProperty("unsigned");
    EXPECT_EQ(root->writeJson(), before);
}

TEST(ElementCopy, ComputedNodesAreCopiedAsTheirValues) {
    ComputedNode computed;
    const VoJsonPtr root = newObject();
    root->set_propertyJ("Fonts", &computed);
    const VoJsonPtr copy = root->clone();
    EXPECT_EQ(copy->getProperty("Fonts")->valueType(), kElementObject);
    EXPECT_EQ(copy->writeJson(), R"({"Fonts":{"size":{"asked":1}}})");
    EXPECT_EQ(copy->writeJson(), R"({"Fonts":{"size":{"asked":1}}})");
    EXPECT_EQ(computed.clone()->writeJson(), R"({"size":{"asked":2}})");
    root->removeProperty("Fonts");
}

TEST(ElementCopy, MergeKeepsWhatIsThere) {
    const VoJsonPtr root = newObject();
    root->makePath("a/both")->set_propertyI("kept", 1, false);
    root->quickGetProperty("a")->set_propertys("other kind", "text", false);
    const VoJsonPtr source = newObject();
    source->makePath("both")->set_propertyI("kept", 2, false);
    source->getProperty("both")->set_propertyI("new", 3, false);
    source->makePath("other kind/below");
    source->makePath("added/below");

    EXPECT_EQ(root->mergeProperty("a", source), 2);
    EXPECT_EQ(root->writeJson(),
              R"({"a":{"both":{"kept":1,"new":3},"other kind":"text","added":{"below":{}}}})");
    source->getProperty("added")->clear();
    EXPECT_TRUE(root->quickGetProperty("a/added/below")) << "the merge shared a node";

    EXPECT_EQ(root->mergeProperty("b", source), 1);
    EXPECT_EQ(root->mergeProperty("b", root), 2) << "a tree merged into a part of itself";
    EXPECT_TRUE(root->quickGetProperty("b/b/both"));
    EXPECT_TRUE(root->quickGetProperty("b/b/b").isNull());
    EXPECT_EQ(root->mergeProperty("a", nullptr), 0);
    EXPECT_EQ(nested(1)->mergeProperty("a", source), 0);
}

TEST(ElementCopy, CopySubPropertyReplacesOnlyOnRequest) {
    const VoJsonPtr target = newObject();
    target->set_propertyI("a", 1, false);
    const VoJsonPtr source = newObject();
    source->set_propertyI("a", 2, false);
    const VoJsonPtr inner = source->makePath("b");
    target->copySubProperty(source, false);
    inner->set_propertyI("later", 1, false);
    EXPECT_EQ(target->writeJson(), R"({"a":1,"b":{}})");
    target->copySubProperty(source, true);
    EXPECT_EQ(target->writeJson(), R"({"a":2,"b":{"later":1}})");
    target->copySubProperty(nullptr, true);
    target->copySubProperty(nested(2), true);
    EXPECT_EQ(target->propertyCount(), 2);
}

TEST(ElementDepth, TooDeepTreesAreRefusedAsAWhole) {
    const VoJsonPtr most = nested(IElementValueBase::kMaxDepth);
    EXPECT_EQ(most->writeJson().getLength(), 2 * IElementValueBase::kMaxDepth);
    EXPECT_TRUE(most->clone());

    const VoJsonPtr deep = nested(IElementValueBase::kMaxDepth + 1);
    const VoJsonPtr source = newObject();
    source->set_propertyI("fits", 1, false);
    source->set_propertyJ("deep", deep);
    const VoJsonPtr target = newObject();
    EXPECT_TRUE(deep->clone().isNull());
    EXPECT_TRUE(deep->writeJson().isEmpty());
    EXPECT_FALSE(deep->writeBinary(newOdMemoryStream()));
    EXPECT_EQ(target->mergeProperty("deep", source), 0);
    target->copySubProperty(source, true);
    EXPECT_EQ(target->propertyCount(), 0);
}

TEST(ElementDepth, CycleIsTooDeep) {
    const VoJsonPtr root = newObject();
    const VoJsonPtr inner = root->makePath("a/b");
    inner->set_propertyJ("back", root);
    EXPECT_TRUE(root->writeJson().isEmpty());
    EXPECT_TRUE(root->clone().isNull());
    EXPECT_EQ(root->quickGetProperty("a/b/back/a/b"), inner);
    inner->clear();
}
