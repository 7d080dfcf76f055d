// Places in virtual tables that show best on objects of the test's own: each operation is
// overridden with an answer that no other gives, and asked for by position.
#include <gtest/gtest.h>

#include <string>

#include "core/vosifindfontsvr.h"
#include "elementreadonlyobject.h"
#include "slotcall.h"
#include "slothosttables.h"
#include "treehelpers.h"
#include "voappservice.h"

using slots::call;
using slots::ofNode;
using slots::ofService;

namespace {

using Name = const OdString&;

// ---- the application service object ----

class AnsweringService : public VoAppService {
  public:
    OdString formatMessage(unsigned int, va_list*) override { return L"formatMessage"; }
    OdString findFile(Name, OdDbBaseDatabase*, FindFileHint) override { return L"findFile"; }
    OdDbUndoControllerPtr newUndoController() override { return controller; }
    void collectFilePathsInDirectory(OdStringArray& result, Name, Name) override {
        result.append(L"collectFilePathsInDirectory");
    }
    OdString getSubstituteFont(Name, OdFontType) override { return L"getSubstituteFont"; }
    bool ttfFileNameByDescriptor(const OdTtfDescriptor&, OdString& fileName) override {
        fileName = L"ttfFileNameByDescriptor";
        return true;
    }
    bool getPassword(Name, bool, OdPassword& password) override {
        password = L"getPassword";
        return true;
    }

    OdDbUndoControllerPtr controller = OdRxObjectImpl<ExUndoController>::createObject();
};

struct HostOverrides {
    int findFile;
    int newUndoController;
    int collectFilePaths;
    int getSubstituteFont;
    int ttfFileName;
    int getPassword;
};

void expectOverridesAt(const void* services, const AnsweringService& object,
                       const HostOverrides& slot) {
    EXPECT_EQ((call<OdString(Name, OdDbBaseDatabase*, int)>(services, ofService(slot.findFile),
                                                            L"name", nullptr, 0)),
              L"findFile");
    EXPECT_EQ(call<OdDbUndoControllerPtr()>(services, ofService(slot.newUndoController)).get(),
              object.controller.get());
    OdStringArray paths;
    call<void(OdStringArray&, Name, Name)>(services, ofService(slot.collectFilePaths), paths, L"",
                                           L"");
    EXPECT_EQ(paths.at(0), L"collectFilePathsInDirectory");
    EXPECT_EQ((call<OdString(Name, OdFontType)>(services, ofService(slot.getSubstituteFont), L"",
                                                kFontTypeShx)),
              L"getSubstituteFont");
    OdString text;
    EXPECT_TRUE((call<bool(const OdTtfDescriptor&, OdString&)>(
        services, ofService(slot.ttfFileName), OdTtfDescriptor(), text)));
    EXPECT_EQ(text, L"ttfFileNameByDescriptor");
    EXPECT_TRUE((call<bool(Name, bool, OdPassword&)>(services, ofService(slot.getPassword), L"",
                                                     false, text)));
    EXPECT_EQ(text, L"getPassword");
}

TEST(CarriedSlots, SystemSideHasTheHostsOverridesBehindItsOwn) {
    const OdStaticRxObject<AnsweringService> object;
    const OdRxSystemServices* system = &object;
    EXPECT_EQ((call<OdString(unsigned int, va_list*)>(system, ofService(slots::kFormatMessage), 0u,
                                                      nullptr)),
              L"formatMessage");
    expectOverridesAt(system, object,
                      {slots::kFindFile, slots::kNewUndoController, slots::kCollectFilePaths,
                       slots::kGetSubstituteFont, slots::kTtfFileName, slots::kGetPassword});
}

TEST(CarriedSlots, HostSideReachesTheOverridesThroughItsOwnPlaces) {
    const OdStaticRxObject<AnsweringService> object;
    const ExHostAppServices* host = &object;
    expectOverridesAt(
        host, object,
        {slots::kHostFindFile, slots::kHostNewUndoController, slots::kHostCollectFilePaths,
         slots::kHostGetSubstituteFont, slots::kHostTtfFileName, slots::kHostGetPassword});
}

// ---- the font search service ----

class AnsweringFinder : public vosi::VosiFindFontSvr {
  public:
    OdString findFile(Name, OdDbBaseDatabase*, int) override { return L"findFile"; }
    OdString findFileInDocument(Name, OdRxObject*, int) override { return L"findFileInDocument"; }
    void scanFonts(int flags) override { scanned = flags; }
    void scanDocumentFonts(OdRxObject* document) override { scannedDocument = document; }
    bool ttfFileNameByDescriptor(const OdTtfDescriptor&, OdString& fileName) override {
        fileName = L"ttfFileNameByDescriptor";
        return true;
    }

    int scanned = 0;
    OdRxObject* scannedDocument = nullptr;
};

TEST(CarriedSlots, FontSearchServiceHasFiveOperations) {
    const auto finder = OdRxObjectImpl<AnsweringFinder>::createObject();
    const void* table = finder.get();
    EXPECT_EQ((call<OdString(Name, OdDbBaseDatabase*, int)>(table, ofService(1), L"", nullptr, 0)),
              L"findFile");
    EXPECT_EQ((call<OdString(Name, OdRxObject*, int)>(table, ofService(2), L"", nullptr, 0)),
              L"findFileInDocument");
    call<void(int)>(table, ofService(3), 3);
    EXPECT_EQ(finder->scanned, 3);
    call<void(OdRxObject*)>(table, ofService(4), finder.get());
    EXPECT_EQ(finder->scannedDocument, finder.get());
    OdString fileName;
    EXPECT_TRUE((call<bool(const OdTtfDescriptor&, OdString&)>(table, ofService(5),
                                                               OdTtfDescriptor(), fileName)));
    EXPECT_EQ(fileName, L"ttfFileNameByDescriptor");
}

// ---- the read-only node ----

constexpr std::time_t kSomeTime = 1626322924;

class TwoProperties : public ElementReadOnlyObject {
  public:
    const PropEntry* getPropMap(int& count) const override {
        static const PropEntry entries[] = {
            {"name", [](const ElementReadOnlyObject*) { return tree::text("computed"); }},
            {"made",
             [](const ElementReadOnlyObject*) {
                 return ElementValue::createObject(kElementTime)->set_valueT(kSomeTime);
             }},
        };
        count = 2;
        return entries;
    }
};

using Key = const OdAnsiString&;
using Node = const VoJsonPtr&;

TEST(CarriedSlots, ReadOnlyNodeComputesItsProperties) {
    const TwoProperties node;
    EXPECT_EQ(call<int()>(&node, ofNode(3)), 0x2002);
    EXPECT_EQ(call<VoJsonPtr(Key)>(&node, ofNode(4), "name")->strValue(), "computed");
    EXPECT_EQ(call<int()>(&node, ofNode(7)), 2);
    OdAnsiString key;
    EXPECT_TRUE((call<VoJsonPtr(int, OdAnsiString&)>(&node, ofNode(8), 1, key)));
    EXPECT_EQ(key, "made");
    EXPECT_TRUE(call<bool(Key)>(&node, ofNode(9), "made"));
    EXPECT_EQ(call<std::time_t(std::time_t)>(&node, ofNode(17), kSomeTime), 0);
    EXPECT_EQ((call<std::time_t(Key, std::time_t)>(&node, ofNode(18), "made", 1)), kSomeTime);
    EXPECT_EQ((call<std::time_t(Key, std::time_t)>(&node, ofNode(18), "absent", 1)), 1);
    int count = 0;
    EXPECT_EQ(call<const PropEntry*(int&)>(&node, ofNode(51), count), node.getPropMap(count));
}

TEST(CarriedSlots, ReadOnlyNodeRefusesChanges) {
    TwoProperties node;
    const VoJsonPtr text = tree::text("new");
    call<void()>(&node, ofNode(2));
    call<void()>(&node, ofNode(2));  // counts, but never goes
    EXPECT_TRUE(
        (call<VoJsonPtr(Key, Key, bool)>(&node, ofNode(19), "name", "new", false)).isNull());
    EXPECT_TRUE((call<VoJsonPtr(Key, Node)>(&node, ofNode(21), "name", text)).isNull());
    EXPECT_TRUE(call<VoJsonPtr(Key)>(&node, ofNode(33), "new").isNull());
    EXPECT_TRUE(call<VoJsonPtr(Key)>(&node, ofNode(39), "a/b").isNull());
    EXPECT_EQ(call<void*(Key)>(&node, ofNode(40), "name"), &node);
    EXPECT_EQ(call<int(Node)>(&node, ofNode(41), text), 0);
    EXPECT_EQ(call<int(int)>(&node, ofNode(43), 0), -1);
    EXPECT_EQ((call<int(Key, Node)>(&node, ofNode(46), "name", text)), 0);
    call<void()>(&node, ofNode(50));
    EXPECT_EQ(call<VoJsonPtr()>(&node, ofNode(49))->writeJson(),
              R"({"name":"computed","made":1626322924})");
}

}  // namespace
