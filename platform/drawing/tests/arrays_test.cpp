#include <limits>

#include "testsupport.h"

namespace {

using Numbers = OdArray<int>;

Numbers numbers(std::initializer_list<int> values) {
    Numbers made;
    for (const int value : values) {
        made.append(value);
    }
    return made;
}

}  // namespace

TEST(Arrays, ShareUntilOneIsChanged) {
    Numbers a = numbers({1, 2, 3});
    const Numbers b(a);
    EXPECT_EQ(std::as_const(a).getPtr(), b.getPtr());
    a[1] = 20;
    EXPECT_EQ(b, numbers({1, 2, 3}));
    EXPECT_EQ(a, numbers({1, 20, 3}));
    Numbers c(b);
    c.removeAt(0).insertAt(2, 4).append(numbers({5, 6}));
    EXPECT_EQ(c, numbers({2, 3, 4, 5, 6}));
    EXPECT_EQ(b, numbers({1, 2, 3}));
}

TEST(Arrays, LetAWalkOutliveRemovals) {
    Numbers live = numbers({1, 2, 3});
    const Numbers held(live);
    int sum = 0;
    for (unsigned int i = held.size(); i-- > 0;) {
        live.removeAt(i);
        sum += held.at(i);
    }
    EXPECT_EQ(sum, 6);
    EXPECT_TRUE(live.isEmpty());
}

TEST(Arrays, TakeTheirOwnElementsAndThemselves) {
    OdStringArray names;
    names.append(L"a long enough text to live outside the string");
    for (int i = 0; i < 100; ++i) {
        names.append(names.first());
        names.insertAt(0, names.last());
    }
    EXPECT_EQ(names.at(50), names.at(0));
    names.append(names);
    EXPECT_EQ(names.size(), 402u);
}

TEST(Arrays, RaiseOnABadIndex) {
    Numbers array = numbers({1});
    unsigned int found = 7;
    EXPECT_EQ(raisedBy([&] { (void)array.at(1); }), eInvalidIndex);
    EXPECT_EQ(raisedBy([&] { array.removeAt(1); }), eInvalidIndex);
    EXPECT_EQ(raisedBy([&] { array.insertAt(2, 0); }), eInvalidIndex);
    EXPECT_EQ(raisedBy([] { (void)Numbers().last(); }), eInvalidIndex);
    EXPECT_FALSE(array.find(1, found, 1));
    EXPECT_EQ(found, 7u);
}

TEST(Arrays, RaiseWhenMemoryEndsAndKeepTheirElements) {
    struct Page {
        char bytes[std::numeric_limits<int>::max()];
    };
    OdArray<Page> pages;
    EXPECT_EQ(raisedBy([&] { pages.resize(std::numeric_limits<unsigned int>::max()); }),
              eOutOfMemory);
    EXPECT_TRUE(pages.isEmpty());
}

TEST(Arrays, ReleaseTheLastElementFirst) {
    static std::string ended;
    class Element : public OdRxObject {
      public:
        explicit Element(char letter = '?') : own(letter) {}
        ~Element() override { ended += own; }

      private:
        char own;
    };
    {
        OdArray<OdRxObjectPtr> array;
        for (const char letter : {'a', 'b', 'c'}) {
            array.append(OdRxObjectPtr(new OdRxObjectImpl<Element>(letter), kOdRxObjAttach));
        }
    }
    EXPECT_EQ(ended, "cba");
}
