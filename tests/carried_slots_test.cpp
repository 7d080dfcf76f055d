// Places in virtual tables that show best on objects of the test's own: each operation is
// overridden with an answer that no other gives, and asked for by position.
#include <gtest/gtest.h>

#include <string>

#include "core/vomoduleservices.h"
#include "core/vosifindfontsvr.h"
#include "slotcall.h"
#include "slothosttables.h"
#include "voappservice.h"

using slots::call;
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

// ---- documents ----

class AnsweringDocument : public vosi::VosiDocument {
  public:
    OdString documentFilePath() override { return L"documentFilePath"; }
    OdString documentFolder() override { return L"documentFolder"; }
    OdSmartPtr<OdDbBaseDatabase> documentDatabase() override { return database; }
    std::uint32_t documentStateBits() override { return 4; }
    OdSmartPtr<vosi::VosiDocumentData> documentData() override { return nullptr; }

    OdSmartPtr<OdDbBaseDatabase> database = OdRxObjectImpl<OdDbBaseDatabase>::createObject();
};

class AnsweringDocumentData : public vosi::VosiDocumentData {
  public:
    OdRxObject* owner() override { return this; }
    OdRxDictionaryPtr dictionary() override { return nullptr; }
};

TEST(CarriedSlots, DocumentsHaveFiveOperations) {
    const auto document = OdRxObjectImpl<AnsweringDocument>::createObject();
    const void* table = document.get();
    EXPECT_EQ(call<OdString()>(table, ofService(1)), L"documentFilePath");
    EXPECT_EQ(call<OdString()>(table, ofService(2)), L"documentFolder");
    EXPECT_EQ(call<OdSmartPtr<OdDbBaseDatabase>()>(table, ofService(3)), document->database);
    EXPECT_EQ(call<std::uint32_t()>(table, ofService(4)), 4u);
    EXPECT_TRUE(call<OdRxObjectPtr()>(table, ofService(5)).isNull());

    const auto data = OdRxObjectImpl<AnsweringDocumentData>::createObject();
    EXPECT_EQ(call<OdRxObject*()>(data.get(), ofService(1)), data.get());
    EXPECT_TRUE(call<OdRxDictionaryPtr()>(data.get(), ofService(2)).isNull());
}

// ---- the main program's callback ----

class AnsweringCallback : public VoMainAppCallback {
  public:
    void initialize() override { calls += "initialize "; }
    void uninitialize() override { calls += "uninitialize "; }
    OdAnsiString queryAppDataPath() override { return "queryAppDataPath"; }
    OdAnsiString querySysFontPath() override { return "querySysFontPath"; }
    OdAnsiString queryTempPath() override { return "queryTempPath"; }
    OdAnsiString queryDocumentPath() override { return "queryDocumentPath"; }

    std::string calls;
};

TEST(CarriedSlots, CallbackBeginsWithItsSixOperations) {
    const AnsweringCallback callback;
    call<void()>(&callback, 0);
    call<void()>(&callback, 1);
    EXPECT_EQ(callback.calls, "initialize uninitialize ");
    EXPECT_EQ(call<OdAnsiString()>(&callback, 2), "queryAppDataPath");
    EXPECT_EQ(call<OdAnsiString()>(&callback, 3), "querySysFontPath");
    EXPECT_EQ(call<OdAnsiString()>(&callback, 4), "queryTempPath");
    EXPECT_EQ(call<OdAnsiString()>(&callback, 5), "queryDocumentPath");
}

}  // namespace
