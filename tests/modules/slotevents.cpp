// The event dispatcher and its reactors by position. The two tables have different orders.
#include "slotchecks.h"
#include "slotjournal.h"
#include "slotlibrary.h"

using slots::call;
using slots::ofService;

namespace vosi {

/// A reactor declared here for itself, under the name by which the dispatcher knows it.
class VosiApRxEventReactor : public OdRxObject {
  public:
    virtual void slot1() { slots::note("Reactor", 1); }
    virtual void slot2() { slots::note("Reactor", 2); }
    virtual void slot3() { slots::note("Reactor", 3); }
    virtual void slot4() { slots::note("Reactor", 4); }
    virtual void slot5() { slots::note("Reactor", 5); }
};

}  // namespace vosi

SLOT_CHECK(checkEventSlots) {
    const OdRxObjectPtr dispatcher = odrxSysRegistry()->getAt(L"VosiRxEvent");
    const OdRxObjectPtr reactor = OdRxObjectImpl<vosi::VosiApRxEventReactor>::createObject();
    const auto heard = [&](int position) {
        journal::clear();
        call<void()>(dispatcher.get(), ofService(position));
        return journal::lines();
    };
    const auto line = [](const char* text) { return std::vector<std::string>{text}; };

    call<void(OdRxObject*)>(dispatcher.get(), ofService(1), reactor.get());
    EXPECT_EQ(reactor->numRefs(), 2);
    EXPECT_EQ(heard(3), line("Reactor 4"));
    EXPECT_EQ(heard(4), line("Reactor 5"));
    EXPECT_EQ(heard(5), line("Reactor 1"));
    EXPECT_EQ(heard(6), line("Reactor 2"));
    EXPECT_EQ(heard(7), line("Reactor 3"));

    call<void(OdRxObject*)>(dispatcher.get(), ofService(2), reactor.get());
    EXPECT_EQ(reactor->numRefs(), 1);
    EXPECT_TRUE(heard(3).empty());
}
