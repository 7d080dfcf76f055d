// Fibers and coroutines by position, and the ten operations that every object begins with.
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>

#include "slotchecks.h"
#include "slotlibrary.h"

using slots::call;
using slots::ofCoroutine;
using slots::ofObject;
using slots::ofService;

namespace {

using Routine = void (*)(void*);

// A fiber that writes a letter for each time it runs.
struct Player {
    const void* fibers;
    void* home;
    std::string letters;
    void* seenFiber;
    void* seenData;
};

void play(void* data) {
    auto& player = *static_cast<Player*>(data);
    player.letters += 'a';
    player.seenFiber = call<void*()>(player.fibers, ofService(9));
    player.seenData = call<void*()>(player.fibers, ofService(8));
    call<void(void*)>(player.fibers, ofService(4), player.home);
    player.letters += 'b';
    call<void(void*)>(player.fibers, ofService(4), player.home);
}

// A coroutine that yields to where it came from, twice.
struct Visitor {
    const void* manager;
    std::string letters;
    void* seenCoroutine;
    bool seenMain;
};

void visit(void* data) {
    auto& visitor = *static_cast<Visitor*>(data);
    for (const char letter : {'a', 'b'}) {
        visitor.letters += letter;
        visitor.seenCoroutine = call<void*()>(visitor.manager, ofService(2));
        visitor.seenMain = call<bool()>(visitor.manager, ofService(6));
        void* back = call<void*()>(visitor.seenCoroutine, ofCoroutine(7));
        call<bool(void*)>(visitor.manager, ofService(4), back);
    }
}

bool isOffCurrentFiberElsewhere(const void* fibers) {
    bool off = false;
    std::thread([&] { off = call<bool()>(fibers, ofService(11)); }).join();
    return off;
}

void* newCoroutine(const void* manager, Visitor& visitor, void* userData) {
    return call<void*(Routine, void*, void*)>(manager, ofService(3), visit, &visitor, userData);
}

}  // namespace

SLOT_CHECK(checkFiberSlots) {
    const OdRxObjectPtr service = vo_arbitDict_getservice(L"Core/Fiber");
    const void* fibers = service.get();
    void* home = call<void*()>(fibers, ofService(9));
    ASSERT_NE(home, nullptr);

    Player player{fibers, home, "", nullptr, nullptr};
    void* fiber = call<void*(std::size_t, Routine, void*)>(fibers, ofService(1), std::size_t{0},
                                                           play, &player);
    ASSERT_NE(fiber, nullptr);
    EXPECT_EQ(player.letters, "");
    EXPECT_EQ(call<void*(void*)>(fibers, ofService(7), fiber), &player);
    EXPECT_EQ(call<void*()>(fibers, ofService(8)), nullptr);
    EXPECT_EQ(call<void*(void*)>(fibers, ofService(10), &player), fiber);

    call<void(void*)>(fibers, ofService(4), fiber);
    EXPECT_EQ(player.letters, "a");
    EXPECT_EQ(player.seenFiber, fiber);
    EXPECT_EQ(player.seenData, &player);
    call<void(void*)>(fibers, ofService(5), &player);
    EXPECT_EQ(player.letters, "ab");

    EXPECT_FALSE(call<bool()>(fibers, ofService(11)));
    EXPECT_TRUE(isOffCurrentFiberElsewhere(fibers));

    call<void(void*)>(fibers, ofService(6), fiber);
    EXPECT_EQ(call<void*(void*)>(fibers, ofService(10), &player), nullptr);
    EXPECT_EQ(call<void*(void*)>(fibers, ofService(7), fiber), nullptr);
}

SLOT_CHECK(checkFiberWorldSlots) {
    const OdRxObjectPtr service = vo_arbitDict_getservice(L"Core/Fiber");
    const void* fibers = service.get();
    int data = 0;
    EXPECT_EQ(call<int(void*)>(fibers, ofService(3), &data), 0);

    void* converted = call<void*(void*)>(fibers, ofService(2), &data);
    EXPECT_EQ(call<void*()>(fibers, ofService(9)), converted);
    EXPECT_EQ(call<void*()>(fibers, ofService(8)), &data);

    EXPECT_EQ(call<int(void*)>(fibers, ofService(3), &data), 1);
    EXPECT_EQ(call<void*()>(fibers, ofService(9)), nullptr);
}

SLOT_CHECK(checkCoroutineManagerSlots) {
    const OdRxObjectPtr service = vo_arbitDict_getservice(L"Core/FiberCoroutine");
    const void* manager = service.get();
    void* main = call<void*()>(manager, ofService(1));
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(call<void*()>(manager, ofService(2)), main);
    EXPECT_TRUE(call<bool()>(manager, ofService(6)));

    Visitor visitor{manager, "", nullptr, true};
    void* coroutine = newCoroutine(manager, visitor, nullptr);
    ASSERT_NE(coroutine, nullptr);
    EXPECT_EQ(visitor.letters, "");
    EXPECT_TRUE(call<bool(void*)>(manager, ofService(4), coroutine));
    EXPECT_EQ(visitor.letters, "a");
    EXPECT_EQ(visitor.seenCoroutine, coroutine);
    EXPECT_FALSE(visitor.seenMain);
    EXPECT_TRUE(call<bool(void*)>(manager, ofService(4), coroutine));
    EXPECT_EQ(visitor.letters, "ab");

    EXPECT_FALSE(call<bool(void*)>(manager, ofService(5), main));
    EXPECT_TRUE(call<bool(void*)>(manager, ofService(5), coroutine));
}

SLOT_CHECK(checkCoroutineSlots) {
    const OdRxObjectPtr service = vo_arbitDict_getservice(L"Core/FiberCoroutine");
    const OdRxObjectPtr fibers = vo_arbitDict_getservice(L"Core/Fiber");
    void* main = call<void*()>(service.get(), ofService(1));
    Visitor visitor{service.get(), "", nullptr, true};
    int first = 0;
    int second = 0;
    void* coroutine = newCoroutine(service.get(), visitor, &first);

    EXPECT_EQ(call<void*()>(coroutine, ofCoroutine(1)),
              call<void*(void*)>(fibers.get(), ofService(10), &visitor));
    EXPECT_EQ(call<void*()>(coroutine, ofCoroutine(2)), &first);
    call<void(void*)>(coroutine, ofCoroutine(3), &second);
    EXPECT_EQ(call<void*()>(coroutine, ofCoroutine(2)), &second);

    EXPECT_EQ(call<void*()>(coroutine, ofCoroutine(4)), main);
    EXPECT_EQ(call<void*()>(coroutine, ofCoroutine(5)), nullptr);
    EXPECT_EQ(call<void*()>(coroutine, ofCoroutine(7)), main);
    EXPECT_EQ(call<void*()>(main, ofCoroutine(4)), nullptr);
    EXPECT_EQ(call<void*()>(main, ofCoroutine(5)), coroutine);
    EXPECT_EQ(call<void*()>(main, ofCoroutine(6)), nullptr);
    EXPECT_EQ(call<void*()>(main, ofCoroutine(7)), main);

    EXPECT_TRUE(call<bool()>(coroutine, ofCoroutine(8)));
    call<void(bool)>(coroutine, ofCoroutine(9), false);
    EXPECT_FALSE(call<bool()>(coroutine, ofCoroutine(8)));
    EXPECT_TRUE(call<bool(void*)>(service.get(), ofService(5), coroutine));
}

// The two destructor entries stand behind the interface's operations. Each is called on a copy in
// static storage: the complete one leaves the storage alone, the deleting one tries to free it.
SLOT_CHECK(checkCoroutineDestructorSlots) {
    const OdRxObjectPtr service = vo_arbitDict_getservice(L"Core/FiberCoroutine");
    const void* main = call<void*()>(service.get(), ofService(1));
    constexpr std::size_t coroutineSize = 7 * sizeof(std::uintptr_t);
    static std::uintptr_t storage[16];
    void* const copy = storage + 2;

    std::memcpy(copy, main, coroutineSize);
    call<void()>(copy, ofCoroutine(10));
    std::memcpy(copy, main, coroutineSize);
    EXPECT_DEATH(call<void()>(copy, ofCoroutine(11)), "free");
}

SLOT_CHECK(checkObjectSlots) {
    const OdRxObjectPtr service = vo_arbitDict_getservice(L"Core/Fiber");
    const OdRxObjectPtr other = vo_arbitDict_getservice(L"Core/FiberCoroutine");
    const void* object = service.get();
    using ClassQuery = OdRxObject*(const OdRxClass*);
    const long held = call<long()>(object, ofObject(6));
    EXPECT_EQ(held, 2);  // the dictionary's and ours

    EXPECT_EQ(call<ClassQuery>(object, ofObject(1), OdRxObject::desc()), service.get());
    EXPECT_EQ(call<long()>(object, ofObject(6)), held + 1);
    EXPECT_EQ(call<ClassQuery>(object, ofObject(2), OdRxObject::desc()), nullptr);
    EXPECT_EQ(call<OdRxClass*()>(object, ofObject(3)), OdRxObject::desc());
    call<void()>(object, ofObject(4));
    EXPECT_EQ(call<long()>(object, ofObject(6)), held + 2);
    call<void()>(object, ofObject(5));
    call<void()>(object, ofObject(5));
    EXPECT_EQ(call<long()>(object, ofObject(6)), held);

    EXPECT_TRUE(call<OdRxObjectPtr()>(object, ofObject(7)).isNull());
    EXPECT_THROW(call<void(const OdRxObject*)>(object, ofObject(8), other.get()), OdError);
    EXPECT_EQ(call<int(const OdRxObject*)>(object, ofObject(9), other.get()), OdRx::kNotOrderable);
    EXPECT_FALSE(call<bool(const OdRxObject*)>(object, ofObject(10), other.get()));
    EXPECT_TRUE(call<bool(const OdRxObject*)>(object, ofObject(10), service.get()));
}
