#include <cstddef>
#include <new>

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
    static bool exhausted = false;
    struct Costly {
        Costly() = default;
        Costly(const Costly&) {
            if (exhausted) {
                throw std::bad_alloc();
            }
        }
        Costly& operator=(const Costly&) = default;
    };
    struct Huge {
        char bytes[std::size_t{1} << 33];
    };
    OdArray<Costly> array;
    array.resize(3);
    const OdArray<Costly> shared(array);
    exhausted = true;
    EXPECT_EQ(raisedBy([&] { array.append(Costly()); }), eOutOfMemory);
    EXPECT_EQ(array.size(), 3u);
    EXPECT_EQ(shared.size(), 3u);
    EXPECT_EQ(raisedBy([] { OdArray<Huge>().resize(0xFFFFFFFFu); }), eOutOfMemory);
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
