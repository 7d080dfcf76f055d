// Coroutines on real fibers: tree, control, deletion, and the edges where there is no fiber.
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <map>
#include <string>

#include "core/voexports.h"
#include "core/voservicekeys.h"
#include "sicorout.h"
#include "vemo_fiber.h"

using vosi::VosiCoroutine;

namespace {

// Stands for the application's service dictionary, so that no application has to be booted.
std::map<std::wstring, OdRxObjectPtr>& services() {
    static std::map<std::wstring, OdRxObjectPtr> entries;
    return entries;
}

}  // namespace

void vo_arbitDict_regservice(const OdString& key, OdRxObjectPtr service) {
    services()[key.c_str()] = service;
}

OdRxObjectPtr vo_arbitDict_getservice(const OdString& key) {
    const auto entry = services().find(key.c_str());
    return entry == services().end() ? OdRxObjectPtr() : entry->second;
}

namespace {

class Coroutine : public testing::Test {
  protected:
    Coroutine()
        : fibers(OdRxObjectImpl<VoFiberService>::createObject()),
          manager(OdRxObjectImpl<vosi::CCoroutineManager>::createObject()) {
        vo_arbitDict_regservice(vosi::kFiberKey, fibers);
        vo_arbitDict_regservice(vosi::kFiberCoroutineKey, manager);
    }
    ~Coroutine() override { services().clear(); }

    /// What start-up does.
    VosiCoroutine* start() {
        fibers->convertThreadToFiber(nullptr);
        return manager->mainCoroutine();
    }

    /// A coroutine that runs the body and then yields for good. The body outlives it.
    VosiCoroutine* create(std::function<void()>& body, void* userData = nullptr) {
        return manager->createCoroutine(play, &body, userData);
    }

    static void play(void* body) {
        (*static_cast<std::function<void()>*>(body))();
        const vosi::VosiCoroutineManagerSvrPtr here(
            vo_arbitDict_getservice(vosi::kFiberCoroutineKey));
        VosiCoroutine* self = here->currentCoroutine();
        here->switchToCoroutine(self ? self->returnCoroutine() : here->mainCoroutine());
    }

    VoFiberSvrPtr fibers;
    vosi::VosiCoroutineManagerSvrPtr manager;
    std::string trace;
};

std::function<void()> nothing = [] {};

}  // namespace

TEST_F(Coroutine, FormATreeAndYieldToTheirCreators) {
    VosiCoroutine* const main = start();
    VosiCoroutine* inner = nullptr;
    std::function<void()> innerBody = [&] { trace += 'c'; };
    std::function<void()> outerBody = [&] {
        trace += 'b';
        EXPECT_FALSE(manager->isMainCoroutine());
        inner = create(innerBody);
        manager->switchToCoroutine(inner);
        trace += 'd';
    };
    int value = 0;
    VosiCoroutine* const outer = create(outerBody, &value);
    EXPECT_EQ(main->parent(), nullptr);
    EXPECT_EQ(main->child(), outer);
    EXPECT_EQ(main->returnCoroutine(), main);
    EXPECT_EQ(outer->parent(), main);
    EXPECT_EQ(outer->spare(), nullptr);
    EXPECT_EQ(outer->userData(), &value);
    EXPECT_EQ(fibers->fiberData(outer->fiber()), &outerBody);
    EXPECT_TRUE(outer->flag());

    trace += 'a';
    EXPECT_TRUE(manager->switchToCoroutine(outer));
    trace += 'e';
    EXPECT_EQ(trace, "abcde");
    EXPECT_EQ(inner->returnCoroutine(), outer);
    EXPECT_EQ(outer->child(), inner);
    EXPECT_TRUE(manager->isMainCoroutine());

    VosiCoroutine* const younger = create(nothing);
    EXPECT_EQ(main->child(), younger) << "the link names the last one";
    EXPECT_EQ(outer->parent(), main);
    for (VosiCoroutine* coroutine : {younger, inner, outer}) {
        EXPECT_TRUE(manager->deleteCoroutine(coroutine));
    }
}

TEST_F(Coroutine, SwitchesNowhereForNoneAndForTheCurrentOne) {
    VosiCoroutine* const main = start();
    EXPECT_FALSE(manager->switchToCoroutine(nullptr));
    EXPECT_TRUE(manager->switchToCoroutine(main));
    EXPECT_EQ(manager->createCoroutine(nullptr, nullptr, nullptr), nullptr);
}

TEST_F(Coroutine, DeletesAllButTheMainOne) {
    VosiCoroutine* const main = start();
    EXPECT_FALSE(manager->deleteCoroutine(nullptr));
    EXPECT_FALSE(manager->deleteCoroutine(main));
    EXPECT_EQ(manager->currentCoroutine(), main);

    std::function<void()> body = [&] { trace += 'x'; };
    VosiCoroutine* coroutine = create(body);
    const VoFiberHandle fiber = coroutine->fiber();
    manager->switchToCoroutine(coroutine);
    EXPECT_TRUE(manager->deleteCoroutine(coroutine));

    VosiCoroutine* seen = nullptr;
    body = [&] { seen = manager->currentCoroutine(); };
    coroutine = create(body);
    EXPECT_EQ(coroutine->fiber(), fiber) << "given back and taken again";
    EXPECT_EQ(seen, nullptr) << "it has to wait for its first switch";
    manager->switchToCoroutine(coroutine);
    EXPECT_EQ(seen, coroutine);
    EXPECT_TRUE(manager->deleteCoroutine(coroutine));
}

TEST_F(Coroutine, RunsOnAfterItsOwnDeletionUntilItsLastSwitch) {
    VosiCoroutine* const main = start();
    std::function<void()> body = [&] {
        EXPECT_TRUE(manager->deleteCoroutine(manager->currentCoroutine()));
        EXPECT_EQ(manager->currentCoroutine(), nullptr);
        trace += 'x';
    };
    VosiCoroutine* coroutine = create(body);
    const VoFiberHandle fiber = coroutine->fiber();
    manager->switchToCoroutine(coroutine);
    EXPECT_EQ(trace, "x");
    EXPECT_EQ(manager->currentCoroutine(), main);

    coroutine = create(body);
    EXPECT_EQ(coroutine->fiber(), fiber);
    manager->switchToCoroutine(coroutine);
    EXPECT_EQ(trace, "xx");
}

TEST_F(Coroutine, ComesIntoBeingWithoutAFiberWhenNoThreadStarts) {
    start();
    vofiber::systemCalls.startThread = [](auto...) { return EAGAIN; };
    VosiCoroutine* const coroutine = create(nothing);
    ASSERT_NE(coroutine, nullptr);
    EXPECT_EQ(coroutine->fiber(), nullptr);
    EXPECT_FALSE(manager->switchToCoroutine(coroutine));
    EXPECT_TRUE(manager->deleteCoroutine(coroutine));
}

TEST_F(Coroutine, KeepsAMainOneThatWasMadeBeforeTheConversion) {
    VosiCoroutine* const main = manager->mainCoroutine();
    EXPECT_EQ(main->fiber(), nullptr);
    EXPECT_EQ(start(), main);
    EXPECT_EQ(main->fiber(), nullptr);
    EXPECT_EQ(manager->currentCoroutine(), nullptr);
    EXPECT_FALSE(manager->switchToCoroutine(main));
    EXPECT_FALSE(manager->deleteCoroutine(main));
}

TEST_F(Coroutine, KnowsNoFiberThatItDidNotMake) {
    start();
    VosiCoroutine* seen = manager->mainCoroutine();
    std::function<void()> body = [&] { seen = manager->currentCoroutine(); };
    fibers->switchToFiber(fibers->createFiber(0, play, &body));
    EXPECT_EQ(seen, nullptr);
    EXPECT_TRUE(manager->isMainCoroutine());
}

TEST_F(Coroutine, FetchesTheFiberServiceForEachUse) {
    start();
    const long references = fibers->numRefs();
    VosiCoroutine* const coroutine = create(nothing);
    manager->switchToCoroutine(coroutine);
    EXPECT_EQ(fibers->numRefs(), references + 1) << "its last switch hasn't returned";
    manager->deleteCoroutine(coroutine);

    services().erase(vosi::kFiberKey);
    try {
        manager->currentCoroutine();
        ADD_FAILURE() << "a service that isn't there was used";
    } catch (const OdError& error) {
        EXPECT_NE(error.description().find(L"Core/Fiber"), -1);
    }
}
