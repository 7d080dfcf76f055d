// The services that start-up can't do without: main window, document manager, system variables.
// Settings: "window.result", "measureinit".
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "testmodule.h"

namespace {

class MainWindow : public vosi::VosiMainUISvr {
  public:
    std::int32_t showMainWindow() override {
        note("showMainWindow");
        return journal::numberSetting("window.result", 0);
    }
};

class NoDocuments : public vosi::VosiDocumentIterator {
  public:
    bool done() override { return true; }
    void next() override {}
    OdRxObjectPtr object() override { return nullptr; }
};

class DocumentManager : public vosi::VosiDocMgrSvr {
  public:
    OdSmartPtr<vosi::VosiDocument> activeDocument() override { return nullptr; }
    void pumpInput() override { note("pumpInput"); }
    OdSmartPtr<vosi::VosiDocumentIterator> newDocumentIterator() override {
        return OdRxObjectImpl<NoDocuments>::createObject();
    }
    void newDocument(const OdString& templatePath, bool makeCurrent) override {
        note("newDocument \"" + utf8(templatePath) + "\" " + std::to_string(makeCurrent));
    }
    void openDocument(const OdString& path, int mode, int flags) override {
        note("openDocument " + utf8(path) + ' ' + std::to_string(mode) + ' ' +
             std::to_string(flags));
    }
    void startUp() override { note("startUp"); }
    void shutDown() override { note("shutDown"); }
};

class EditSystem : public vosi::VosiEditSystemSvr {
  public:
    void setSysVar(const OdString& name, vosi::VosiSysVarValue& value, int mode,
                   int flags) override {
        note("setSysVar " + utf8(name) + ' ' + std::to_string(value.shortValue) + ' ' +
             std::to_string(mode) + ' ' + std::to_string(flags));
    }
    void getSysVar(const OdString& name, vosi::VosiSysVarValue& value) override {
        const bool zeroed =
            (value.word1 | value.word2 | value.word3 | value.word4 | value.word5) == 0;
        note("getSysVar " + utf8(name) + (zeroed ? "" : " into a used record"));
        value.shortValue = static_cast<std::int16_t>(journal::numberSetting("measureinit", 0));
    }
};

class Stage : public ServiceModule {
  public:
    void initApp() override {
        ServiceModule::initApp();
        provide<MainWindow>(vosi::kMainUIKey);
        provide<DocumentManager>(vosi::kDocMgrKey);
        provide<EditSystem>(vosi::kEditSystemKey);
    }
};

}  // namespace

ODRX_DEFINE_DYNAMIC_MODULE(Stage)
