// A module with the three services that no application starts without, reduced to the least: a
// window that shows nothing, no documents, and system variables that are all 0.
#include <core/voexports.h>
#include <core/vomoduleservices.h>
#include <core/voservicekeys.h>

namespace {

class Window : public vosi::VosiMainUISvr {
  public:
    std::int32_t showMainWindow() override { return 0; }
};

class NoDocuments : public vosi::VosiDocumentIterator {
  public:
    bool done() override { return true; }
    void next() override {}
    OdRxObjectPtr object() override { return nullptr; }
};

class Documents : public vosi::VosiDocMgrSvr {
  public:
    OdSmartPtr<vosi::VosiDocument> activeDocument() override { return nullptr; }
    void pumpInput() override {}
    OdSmartPtr<vosi::VosiDocumentIterator> newDocumentIterator() override {
        return OdRxObjectImpl<NoDocuments>::createObject();
    }
    void newDocument(const OdString&, bool) override {}
    void openDocument(const OdString&, int, int) override {}
    void startUp() override {}
    void shutDown() override {}
};

class Variables : public vosi::VosiEditSystemSvr {
  public:
    void setSysVar(const OdString&, vosi::VosiSysVarValue&, int, int) override {}
    void getSysVar(const OdString&, vosi::VosiSysVarValue& value) override { value = {}; }
};

class Desk : public OdRxModuleBase {
  public:
    void initApp() override {
        vo_arbitDict_regservice(vosi::kMainUIKey, OdRxObjectImpl<Window>::createObject());
        vo_arbitDict_regservice(vosi::kDocMgrKey, OdRxObjectImpl<Documents>::createObject());
        vo_arbitDict_regservice(vosi::kEditSystemKey, OdRxObjectImpl<Variables>::createObject());
    }
    void uninitApp() override {
        vo_arbitDict_clearservice(vosi::kEditSystemKey);
        vo_arbitDict_clearservice(vosi::kDocMgrKey);
        vo_arbitDict_clearservice(vosi::kMainUIKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Desk)
