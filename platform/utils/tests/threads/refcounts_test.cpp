// What a thread did with a shared thing before it let go of it is over for the one that lets go
// last, or that goes on alone: true of the three reference counts, of objects, arrays and nodes. A
// machine that keeps the order of memory by itself doesn't tell; ThreadSanitizer does.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/testfolder.h"
#include "utils/elementvalue.h"
#include "utils/vojson.h"

namespace {

constexpr int kRounds = 200;

/// Gives each of two threads a holder of its own to use and to let go, and waits for both.
template <class Holder, class Use>
void letGoOnTwoThreads(Holder first, Holder second, Use use) {
    const auto run = [use](Holder& holder, int thread) {
        use(holder, thread);
        holder = Holder();
    };
    const std::jthread one([&] { run(first, 0); });
    const std::jthread other([&] { run(second, 1); });
}

class Slate : public OdRxObject {
  public:
    ~Slate() override { read = lines[0] + lines[1]; }

    std::array<int, 2> lines{};
    static inline int read = 0;
};

}  // namespace

TEST(ReferenceCounts, OfAnObjectShowItsEndWhatAllDidToIt) {
    for (int round = 0; round < kRounds; ++round) {
        auto slate = OdRxObjectImpl<Slate>::createObject();
        OdSmartPtr<Slate> second(slate);
        letGoOnTwoThreads(std::move(slate), std::move(second),
                          [](const OdSmartPtr<Slate>& held, int thread) {
                              held->lines.at(static_cast<std::size_t>(thread)) = 1;
                          });
        ASSERT_EQ(std::exchange(Slate::read, 0), 2);
    }
}

TEST(ReferenceCounts, OfANodeEndItWhenAllHaveReadIt) {
    for (int round = 0; round < kRounds; ++round) {
        VoJsonPtr node = ElementValue::createObject(kElementObject);
        node->set_propertyI("number", 1, false);
        std::array<std::int64_t, 2> read{};
        VoJsonPtr second(node);
        letGoOnTwoThreads(std::move(node), std::move(second),
                          [&read](const VoJsonPtr& held, int thread) {
                              read.at(static_cast<std::size_t>(thread)) =
                                  held->getProperty("number")->longlongValue();
                          });
        ASSERT_EQ(read[0] + read[1], 2);
    }
}

// Neighbours of one block go with whoever held them; the block goes with the last.
TEST(ReferenceCounts, OfABlockEndItWhenAllItsNodesHaveGone) {
    const TestFolder folder;
    std::string text = "[0";
    for (int index = 1; index < 100; ++index) {
        text += ",\"a text that is longer than short ones\"";
    }
    const OdAnsiString path(folder.file("nodes.json", text + ']'));
    for (int round = 0; round < kRounds; ++round) {
        VoJson root;
        ASSERT_TRUE(root.read(path, -1, nullptr));
        std::array<std::vector<VoJsonPtr>, 2> halves;
        for (int index = 1; index < root.ArrayCount(); ++index) {
            halves.at(static_cast<std::size_t>(index) % 2).push_back(root(index));
        }
        static_cast<VoJsonPtr&>(root) = nullptr;
        std::array<int, 2> lengths{};
        letGoOnTwoThreads(std::move(halves[0]), std::move(halves[1]),
                          [&lengths](const std::vector<VoJsonPtr>& nodes, int thread) {
                              lengths.at(static_cast<std::size_t>(thread)) =
                                  nodes.back()->strValue().getLength();
                          });
        ASSERT_EQ(lengths[0], 37);
        ASSERT_EQ(lengths[1], 37);
    }
}

// Who finds itself alone with what was shared writes it where it is.
template <class Shared, class Read, class Write>
int readBesideAWriter(Shared writer, Read readFrom, Write writeTo) {
    Shared reader(writer);
    std::atomic<bool> isGone = false;
    int read = 0;
    const std::jthread other([&] {
        read = readFrom(std::as_const(reader));
        reader = Shared();
        // Tells nothing about the order of anything else.
        isGone.store(true, std::memory_order_relaxed);
    });
    while (!isGone.load(std::memory_order_relaxed)) {
        std::this_thread::yield();
    }
    writeTo(writer);
    return read;
}

TEST(ReferenceCounts, OfAnArrayLetTheLastOneWriteWhenAllHaveRead) {
    for (int round = 0; round < kRounds; ++round) {
        OdArray<int> array;
        array.append(1);
        const int read = readBesideAWriter(
            std::move(array), [](const OdArray<int>& held) { return held.first(); },
            [](OdArray<int>& held) { held[0] = 2; });
        ASSERT_EQ(read, 1);
    }
}

TEST(ReferenceCounts, OfATextLetTheLastOneWriteWhenAllHaveRead) {
    for (int round = 0; round < kRounds; ++round) {
        const int read = readBesideAWriter(
            OdString(L"text"), [](const OdString& held) { return static_cast<int>(held.getAt(3)); },
            [](OdString& held) { held.trimRight(L't'); });
        ASSERT_EQ(read, L't');
    }
}
