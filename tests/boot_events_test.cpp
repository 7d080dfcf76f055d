// The dispatcher of application events, as modules reach it.
#include "boot_support.h"

using testing::ElementsAre;

namespace {

class EventsTest : public BootTest {
  protected:
    EventsTest() {
        bootBare();
        journal::clear();
    }

    OdSmartPtr<JournalReactor> first = JournalReactor::create("first");
    OdSmartPtr<JournalReactor> second = JournalReactor::create("second");
};

TEST_F(EventsTest, EachFiringCallsItsOwnOperation) {
    dispatcher()->addReactor(first.get());
    dispatcher()->fireSysConfigLoaded();
    dispatcher()->fireUserConfigLoaded();
    dispatcher()->fireMainWindowReady();
    dispatcher()->fireAppStarted();
    dispatcher()->fireAppExiting();
    EXPECT_THAT(journal::lines(),
                ElementsAre("first hears sysConfigLoaded", "first hears userConfigLoaded",
                            "first hears mainWindowReady", "first hears appStarted",
                            "first hears appExiting"));
}

TEST_F(EventsTest, ReactorsAreHeldOnceInTheOrderOfAddition) {
    dispatcher()->fireAppStarted();
    dispatcher()->addReactor(first.get());
    dispatcher()->addReactor(second.get());
    dispatcher()->addReactor(first.get());
    EXPECT_EQ(first->numRefs(), 2);
    dispatcher()->fireAppStarted();
    dispatcher()->removeReactor(first.get());
    dispatcher()->removeReactor(first.get());
    EXPECT_EQ(first->numRefs(), 1);
    dispatcher()->addReactor(first.get());
    dispatcher()->fireAppExiting();
    EXPECT_THAT(journal::lines(), ElementsAre("first hears appStarted", "second hears appStarted",
                                              "second hears appExiting", "first hears appExiting"));
    // The registry's reference is the only one.
    EXPECT_EQ(dispatcher()->numRefs(), 2);
}

TEST_F(EventsTest, APassCallsThoseThatStoodInItWhenItBegan) {
    auto third = JournalReactor::create("third");
    JournalReactor* const bare = third.get();
    first->then = [&] {
        dispatcher()->removeReactor(first.get());
        dispatcher()->removeReactor(bare);
        dispatcher()->addReactor(second.get());
    };
    dispatcher()->addReactor(first.get());
    dispatcher()->addReactor(bare);
    third.release();
    dispatcher()->fireAppStarted();
    dispatcher()->fireAppStarted();
    EXPECT_THAT(journal::lines(), ElementsAre("first hears appStarted", "third hears appStarted",
                                              "third released", "second hears appStarted"));
}

TEST_F(EventsTest, WhatAReactorRaisesEndsThePassAlone) {
    first->then = [] { throw OdError(L"reactor's own"); };
    dispatcher()->addReactor(first.get());
    dispatcher()->addReactor(second.get());
    EXPECT_THROW(dispatcher()->fireAppStarted(), OdError);
    EXPECT_EQ(first->numRefs(), 2);
    first->then = [] {};
    dispatcher()->fireAppStarted();
    EXPECT_THAT(journal::lines(), ElementsAre("first hears appStarted", "first hears appStarted",
                                              "second hears appStarted"));
}

TEST_F(EventsTest, AReactorThatGoesMayCallTheDispatcher) {
    struct Leaving : vosi::VosiApRxEventReactor {
        vosi::VosiApRxEventReactor* companion = nullptr;
        ~Leaving() override {
            dispatcher()->removeReactor(this);
            dispatcher()->removeReactor(companion);
            dispatcher()->fireAppStarted();
        }
    };
    auto leaving = OdRxObjectImpl<Leaving>::createObject();
    leaving->companion = first.get();
    Leaving* const bare = leaving.get();
    dispatcher()->addReactor(bare);
    dispatcher()->addReactor(first.get());
    dispatcher()->addReactor(second.get());
    leaving.release();
    dispatcher()->removeReactor(bare);
    dispatcher()->removeReactor(bare);
    EXPECT_THAT(journal::lines(), ElementsAre("second hears appStarted"));
    EXPECT_EQ(first->numRefs(), 1);
    EXPECT_EQ(second->numRefs(), 2);
}

// A reactor may answer the cast for itself: with another object, or with none.
TEST_F(EventsTest, AReactorIsAskedForTheOneToCall) {
    struct Asked : vosi::VosiApRxEventReactor {
        vosi::VosiApRxEventReactor* standIn = nullptr;
        OdRxObject* queryX(const OdRxClass*) const override {
            if (standIn) {
                standIn->addRef();
            }
            return standIn;
        }
        void onAppStarted() override { note("the wrong one hears"); }
    };
    auto asked = OdRxObjectImpl<Asked>::createObject();
    asked->standIn = first.get();
    dispatcher()->addReactor(asked.get());
    dispatcher()->addReactor(second.get());
    dispatcher()->fireAppStarted();
    EXPECT_EQ(first->numRefs(), 1);
    asked->standIn = nullptr;
    EXPECT_THROW(dispatcher()->fireAppStarted(), OdError_NotThatKindOfClass);
    dispatcher()->removeReactor(asked.get());
    EXPECT_THAT(journal::lines(), ElementsAre("first hears appStarted", "second hears appStarted"));
}

TEST_F(EventsTest, WithoutTheEntryEverythingElseGoesOn) {
    dispatcher()->addReactor(first.get());
    odrxSysRegistry()->remove(vosi::kRxEventKey);
    EXPECT_EQ(shutDown(), 0);
    EXPECT_THAT(journalOf({"first hears"}), testing::IsEmpty());

    program.onInitialize = [] { odrxSysRegistry()->remove(vosi::kRxEventKey); };
    configure({});
    EXPECT_EQ(boot(), 0);
}

}  // namespace
