// The object model: classes, extensions, casts, and what outlives the runtime.
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "testsupport.h"

namespace {

class Shape : public OdRxObject {
    ODRX_DECLARE_MEMBERS(Shape)
};
class Circle : public Shape {
    ODRX_DECLARE_MEMBERS(Circle)
};
class AreaPE : public OdRxObject {
    ODRX_DECLARE_MEMBERS(AreaPE)
    virtual int area() const { return 3; }
};
class NamelessService : public OdRxObject {
  public:
    virtual int answer() { return 42; }
};

OdRxObjectPtr makeCircle() {
    return OdRxObjectImpl<Circle>::createObject();
}

ODRX_DEFINE_MEMBERS(Shape, OdRxObject, nullptr, L"Shape")
ODRX_DEFINE_MEMBERS(Circle, Shape, makeCircle, L"Circle")
ODRX_DEFINE_MEMBERS(AreaPE, OdRxObject, nullptr, L"AreaPE")

class ObjectModel : public RuntimeTest {
  protected:
    void SetUp() override {
        RuntimeTest::SetUp();
        Shape::rxInit();
        Circle::rxInit();
        AreaPE::rxInit();
    }
    void TearDown() override {
        AreaPE::rxUninit();
        Circle::rxUninit();
        Shape::rxUninit();
        RuntimeTest::TearDown();
    }
};

OdSmartPtr<AreaPE> newExtension() {
    return OdRxObjectImpl<AreaPE>::createObject();
}

// Where an operation stands in the virtual table, from the representation of its member pointer.
// Both of its forms (odd offset; even offset with the mark elsewhere) come to the same number.
template <class Operation>
std::size_t slotOf(Operation operation) {
    std::ptrdiff_t parts[2];
    static_assert(sizeof parts == sizeof operation);
    std::memcpy(parts, &operation, sizeof parts);
    return static_cast<std::size_t>(parts[0]) / sizeof(void*);
}

}  // namespace

TEST(Slots, StandInTheirOrder) {
    EXPECT_EQ(slotOf(&OdRxObject::queryX), 2u);
    EXPECT_EQ(slotOf(&OdRxObject::x), 3u);
    EXPECT_EQ(slotOf(&OdRxObject::isA), 4u);
    EXPECT_EQ(slotOf(&OdRxObject::addRef), 5u);
    EXPECT_EQ(slotOf(&OdRxObject::release), 6u);
    EXPECT_EQ(slotOf(&OdRxObject::numRefs), 7u);
    EXPECT_EQ(slotOf(&OdRxObject::clone), 8u);
    EXPECT_EQ(slotOf(&OdRxObject::copyFrom), 9u);
    EXPECT_EQ(slotOf(&OdRxObject::comparedTo), 10u);
    EXPECT_EQ(slotOf(&OdRxObject::isEqualTo), 11u);

    EXPECT_EQ(slotOf(&OdDbBaseDatabasePE::databaseFileName), 13u);
    const std::size_t message = slotOf(&OdRxSystemServices::formatMessage);
    EXPECT_EQ(slotOf(&OdRxSystemServices::getFileSize) + 1, message);
    EXPECT_EQ(slotOf(&OdRxSystemServices::formatMsg), message + 1);
    const std::size_t collect = slotOf(&OdDbBaseHostAppServices::collectFilePathsInDirectory);
    EXPECT_EQ(slotOf(&OdDbBaseHostAppServices::getSystemFontFolders) + 1, collect);
    EXPECT_EQ(slotOf(&OdDbBaseHostAppServices::fileDialog), collect + 1);
    const std::size_t builder = slotOf(&OdDbBaseHostAppServices::initializeModelerBuilder);
    EXPECT_EQ(slotOf(&OdDbBaseHostAppServices::numThreads) + 1, builder);
    EXPECT_EQ(slotOf(&OdDbBaseHostAppServices::getEnv), builder + 1);
}

TEST_F(ObjectModel, ClassesKnowTheirParents) {
    EXPECT_TRUE(Circle::desc()->isDerivedFrom(Shape::desc()));
    EXPECT_TRUE(Circle::desc()->isDerivedFrom(OdRxObject::desc()));
    EXPECT_FALSE(Shape::desc()->isDerivedFrom(Circle::desc()));
    EXPECT_FALSE(Shape::desc()->isDerivedFrom(nullptr));
    EXPECT_EQ(Circle::desc()->isA(), OdRxClass::desc());
    EXPECT_TRUE(Shape::desc()->create().isNull());
    EXPECT_EQ(Circle::desc()->create()->isA(), Circle::desc());
}

TEST_F(ObjectModel, ClassNamesAreTakenOnce) {
    EXPECT_EQ(raisedBy([] { newOdRxClass(L"Circle", OdRxObject::desc(), nullptr); }),
              eInvalidInput);
    EXPECT_EQ(raisedBy([] { newOdRxClass(L"OdRxObject", OdRxObject::desc(), nullptr); }),
              eInvalidInput);
    EXPECT_EQ(raisedBy([] { newOdRxClass(L"Orphan", nullptr, nullptr); }), eNotInitializedYet);
    OdRxClass* again = newOdRxClass(L"Again", Shape::desc(), nullptr);
    deleteOdRxClass(again);
    deleteOdRxClass(newOdRxClass(L"Again", Shape::desc(), nullptr));
}

TEST_F(ObjectModel, CastsFollowTheClass) {
    const OdRxObjectPtr object = Circle::desc()->create();
    EXPECT_EQ(Shape::cast(object.get()), OdSmartPtr<Shape>(object));
    EXPECT_TRUE(AreaPE::cast(object.get()).isNull());
    EXPECT_TRUE(Shape::cast(nullptr).isNull());
    EXPECT_EQ(object->queryX(nullptr), nullptr);
    EXPECT_EQ(object->numRefs(), 1);
    try {
        const OdSmartPtr<AreaPE> wrong(object);
        FAIL() << "the cast passed";
    } catch (const OdError_NotThatKindOfClass& error) {
        EXPECT_EQ(error.description(), L"Not that kind of class: Circle is no AreaPE");
        EXPECT_EQ(error.fromClass(), Circle::desc());
        EXPECT_EQ(error.toClass(), AreaPE::desc());
    }
}

TEST_F(ObjectModel, AServiceWithoutAClassAnswersToTheRootClass) {
    const OdRxObjectPtr object = OdRxObjectImpl<NamelessService>::createObject();
    EXPECT_EQ(object->isA(), OdRxObject::desc());
    EXPECT_EQ(OdSmartPtr<NamelessService>(object)->answer(), 42);
    EXPECT_EQ(raisedBy([] { OdSmartPtr<NamelessService>()->answer(); }), eNotApplicable);
}

TEST_F(ObjectModel, ExtensionsAnswerForDerivedClasses) {
    const OdRxObjectPtr object = Circle::desc()->create();
    const auto general = newExtension();
    const auto special = newExtension();
    EXPECT_TRUE(Shape::desc()->addX(AreaPE::desc(), general.get()).isNull());
    EXPECT_EQ(OdSmartPtr<AreaPE>(object), general);
    Circle::desc()->addX(AreaPE::desc(), special.get());
    EXPECT_EQ(OdSmartPtr<AreaPE>(object), special);
    EXPECT_EQ(Circle::desc()->addX(AreaPE::desc(), general.get()).get(), special.get());
    EXPECT_EQ(Circle::desc()->delX(AreaPE::desc()).get(), general.get());
    EXPECT_TRUE(Circle::desc()->delX(AreaPE::desc()).isNull());
    EXPECT_EQ(OdSmartPtr<AreaPE>(object)->area(), 3);
    EXPECT_EQ(special->numRefs(), 1);
    Shape::rxUninit();
    EXPECT_EQ(general->numRefs(), 1) << "the ended class kept its extension";
    EXPECT_TRUE(Circle::desc()->isDerivedFrom(OdRxObject::desc())) << "its child lost its way up";
}

TEST_F(ObjectModel, ADatabaseIsAskedThroughItsExtension) {
    OdStaticRxObject<ExHostAppServices> host;
    const OdDbDatabasePtr database = host.createDatabase(true, 1);
    database->setFilename(L"/plan.dxf");
    const OdSmartPtr<OdDbBaseDatabase> base = database;
    const OdDbBaseDatabasePEPtr asked(base);
    EXPECT_EQ(asked->databaseFileName(base.get()), L"/plan.dxf");
    EXPECT_EQ(asked->appServices(base.get()), static_cast<OdDbBaseHostAppServices*>(&host));
    EXPECT_EQ(asked->databaseFileName(nullptr), L"");
    EXPECT_EQ(database->measurement(), 1);
}

TEST(RuntimeLife, MisuseIsAnswered) {
    OdStaticRxObject<ExSystemServices> services;
    EXPECT_EQ(raisedBy([] { odUninitialize(); }), eNotInitializedYet);
    EXPECT_EQ(raisedBy([] { odrxDynamicLinker(); }), eNotInitializedYet);
    EXPECT_EQ(raisedBy([] { odInitialize(nullptr); }), eInvalidInput);
    EXPECT_TRUE(odrxSysRegistry().isNull());
    EXPECT_TRUE(odrxServiceDictionary().isNull());
    EXPECT_EQ(odrxSystemServices(), nullptr);
    EXPECT_EQ(raisedBy([] { OdStaticRxObject<ExHostAppServices>().createDatabase(); }),
              eNotInitializedYet);
    odInitialize(&services);
    EXPECT_EQ(raisedBy([&] { odInitialize(&services); }), eInvalidInput);
    EXPECT_EQ(odrxSystemServices(), &services);
    odUninitialize();
}

TEST(RuntimeLife, BeginsAgainAfterItsEnd) {
    OdStaticRxObject<ExSystemServices> services;
    EXPECT_NE(OdRxObject::desc(), nullptr);
    for (int life = 0; life < 2; ++life) {
        EXPECT_EQ(OdRxDictionary::desc(), nullptr);
        odInitialize(&services);
        EXPECT_FALSE(odrxSysRegistry()->getAt(ODDB_SYSVARDICT).isNull());
        EXPECT_EQ(odrxSysRegistry()->numEntries(), 1u);
        const OdStreamBufPtr kept = newOdMemoryStream();
        OdRxObject::desc()->addX(OdStreamBuf::desc(), kept.get());
        odrxSysRegistry()->putAt(L"mine", kept.get());
        odrxServiceDictionary()->putAt(L"mine", kept.get());
        odUninitialize();
        EXPECT_EQ(kept->numRefs(), 1);
        EXPECT_EQ(odrxSystemServices(), nullptr);
    }
}

TEST(RuntimeLife, ObjectsOutliveIt) {
    OdStaticRxObject<ExSystemServices> services;
    OdStaticRxObject<ExHostAppServices> host;
    odInitialize(&services);
    const OdRxDictionaryPtr dictionary(OdRxDictionary::desc()->create());
    const OdDbDatabasePtr database = host.createDatabase();
    dictionary->putAt(L"database", database.get());
    odUninitialize();

    const OdRxObjectPtr found = dictionary->getAt(L"database");
    EXPECT_EQ(found->isA(), nullptr);
    EXPECT_EQ(OdRxObjectPtr::cast(found.get()), found);
    EXPECT_TRUE(OdDbDatabase::cast(found.get()).isNull());
    EXPECT_EQ(database->numRefs(), 3);
    EXPECT_EQ(raisedBy([&] { const OdDbDatabasePtr typed(found); }), eNotThatKindOfClass);
}

// A usage request ends the process with the runtime up; that is no leak and touches nothing gone.
TEST(RuntimeLife, TheProcessMayEndDuringIt) {
    auto endDuringIt = [] {
        static OdStaticRxObject<ExSystemServices> services;
        odInitialize(&services);
        odrxSysRegistry()->putAt(L"mine", OdRxDictionary::desc()->create().get());
        std::exit(0);
    };
    EXPECT_EXIT(endDuringIt(), testing::ExitedWithCode(0), "^$");
}

TEST(ReferenceCounts, HoldOnManyThreads) {
    static std::atomic<int> ended{0};
    class Counted : public OdRxObject {
      public:
        ~Counted() override { ++ended; }
    };
    auto object = OdRxObjectImpl<Counted>::createObject();
    auto shareOften = [&object] {
        for (int turn = 0; turn < 20000; ++turn) {
            OdRxObjectPtr share(object);
            share.release();
        }
    };
    {
        const std::jthread one(shareOften);
        const std::jthread other(shareOften);
        shareOften();
    }
    EXPECT_EQ(object->numRefs(), 1);
    EXPECT_EQ(ended, 0);
    object.release();
    EXPECT_EQ(ended, 1);
}

TEST(StaticObjects, AreNotCounted) {
    OdStaticRxObject<ExHostAppServices> host;
    OdDbHostAppProgressMeter* meter = host.newProgressMeter();
    for (int i = 0; i < 3; ++i) {
        host.release();
        meter->release();
    }
    meter->start(L"");
    host.releaseProgressMeter(meter);
    OdPassword password(L"kept");
    EXPECT_FALSE(host.getPassword(L"", false, password));
    EXPECT_EQ(password, L"kept");
}
