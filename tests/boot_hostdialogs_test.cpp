// What the host asks of other modules' services: passwords, undo controllers, geometry builders.
#include "boot_support.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A module's password service, of a class that the library doesn't know.
class Doorkeeper : public OdRxObject {
  public:
    virtual bool ask(const OdString& drawing, bool isXref, OdPassword& password) {
        note("ask " + utf8(drawing) + (isXref ? " xref" : "") + " \"" + utf8(password) + '"');
        password = L"sesame";
        return !isXref;
    }
};

class Modeler : public OdModelerGeometryBuilder {
  public:
    ~Modeler() override { note("modeler released"); }
    OdResult initializeBuilder(OdRxObject* builder, std::uint32_t entityType) override {
        note("modeler takes " + std::to_string(entityType) + (builder ? " with builder" : ""));
        return static_cast<OdResult>(entityType);
    }
};

OdRxObjectPtr makeModeler() {
    return OdRxObjectImpl<Modeler>::createObject();
}

OdRxObjectPtr makeNothing() {
    return nullptr;
}

class HostDialogsTest : public BootTest {
  protected:
    HostDialogsTest() { bootBare(); }

    static void registerModeler(OdRxObjectPtr (*constructor)()) {
        OdRxClass* creator =
            newOdRxClass(L"TestModeler", OdModelerGeometryBuilder::desc(), constructor);
        odrxServiceDictionary()->putAt(L"OdModelerGeometryCreator", creator);
        deleteOdRxClass(creator);
    }
};

TEST_F(HostDialogsTest, PasswordsComeFromTheServiceAsLongAsItIsThere) {
    ExHostAppServices* host = vodbSystemServices();
    OdPassword password = L"as it was";
    EXPECT_FALSE(host->getPassword(L"plan.dwg", false, password));
    EXPECT_EQ(password, L"as it was");

    vo_arbitDict_regservice(vosi::kGetPasswordKey, OdRxObjectImpl<Doorkeeper>::createObject());
    EXPECT_TRUE(host->getPassword(L"plan.dwg", false, password));
    EXPECT_EQ(password, L"sesame");
    EXPECT_FALSE(host->getPassword(L"part.dwg", true, password));
    EXPECT_THAT(journalOf({"ask"}),
                ElementsAre("ask plan.dwg \"as it was\"", "ask part.dwg xref \"sesame\""));

    vo_arbitDict_clearservice(vosi::kGetPasswordKey);
    EXPECT_FALSE(host->getPassword(L"plan.dwg", false, password));
    EXPECT_EQ(journalOf({"ask"}).size(), 2);
    EXPECT_THAT(libraryLog(), Not(testing::Contains(testing::HasSubstr("assword"))));
}

TEST_F(HostDialogsTest, EachUndoControllerIsItsCallersOwn) {
    const OdDbUndoControllerPtr first = vodbSystemServices()->newUndoController();
    const OdDbUndoControllerPtr second = vodbSystemServices()->newUndoController();
    EXPECT_NE(first.get(), second.get());
    EXPECT_NE(dynamic_cast<ExUndoController*>(first.get()), nullptr);
    EXPECT_EQ(first->numRefs(), 1);
}

TEST_F(HostDialogsTest, BuildersGoToTheModelersObjectWhichLivesForTheCall) {
    ExHostAppServices* host = vodbSystemServices();
    EXPECT_EQ(host->initializeModelerBuilder(nullptr, 7), eNoInterface);
    registerModeler(makeNothing);
    EXPECT_EQ(host->initializeModelerBuilder(nullptr, 7), eNoInterface);
    registerModeler(makeModeler);
    const OdRxObjectPtr builder = OdRxObjectImpl<OdRxObject>::createObject();
    EXPECT_EQ(host->initializeModelerBuilder(builder.get(), eEndOfFile), eEndOfFile);
    EXPECT_THAT(journalOf({"modeler"}),
                ElementsAre("modeler takes 46 with builder", "modeler released"));
    odrxServiceDictionary()->remove(L"OdModelerGeometryCreator");
    EXPECT_EQ(host->initializeModelerBuilder(nullptr, 7), eNoInterface);
}

TEST_F(HostDialogsTest, WarningsLeaveNoTrace) {
    clearLibraryLog();
    ExHostAppServices* host = vodbSystemServices();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    host->warning("group", OdString(L"text"));
    host->warning(eFileNotFound, OdDbObjectId());
    host->warning(OdError(L"text"));
    host->warning("group", OdError(eInvalidInput, L"text"));
    EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
    EXPECT_THAT(libraryLog(), IsEmpty());
}

}  // namespace
