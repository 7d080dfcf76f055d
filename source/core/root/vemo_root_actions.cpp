#include "vemo_root_actions.h"

#include <utils/paths.h>

#include "core/voexports.h"
#include "core/vomoduleservices.h"
#include "core/voservicekeys.h"
#include "rootlog.h"
#include "rootservices.h"
#include "runobserver.h"
#include "treehelpers.h"

namespace {

// Codes of INSUNITS.
constexpr std::int16_t kUnitsInches = 1;
constexpr std::int16_t kUnitsMillimetres = 4;

OdAnsiString commandLineText(const char* key) {
    return tree::textOr(tree::at(vo_runtime_config("ExeOption"), key), "");
}

auto documentManager() {
    return requiredService<vosi::VosiDocMgrSvr>(vosi::kDocMgrKey);
}

auto autoTest() {
    return optionalService<vosi::VosiAutoTestSvr>(vosi::kAutoTestKey);
}

auto editSystem() {
    return requiredService<vosi::VosiEditSystemSvr>(vosi::kEditSystemKey);
}

void openDocument(const OdAnsiString& path) {
    run::note([&] { return "opens " + path; });
    documentManager()->openDocument(OdUtf8StringToOdString(path), 0, 0);
}

// ---- script ----

void recordIfConfigured() {
    const VoJsonPtr settings = vo_sys_config("Core/autoTest");
    if (!tree::boolOr(tree::at(settings, "autoRecord"), false) || autoTest().isNull()) {
        return;
    }
    OdAnsiString file = tree::textOr(tree::at(settings, "autoRecordfile"), "");
    if (file.isEmpty()) {
        file = voutCombinePath(tree::textOr(vo_runtime_config("ExeRootPath"), ""), "autotest.ast");
    }
    autoTest()->setRecordFile(file);
    autoTest()->startRecording();
}

void playRecords(vosi::VosiScriptReader& reader) {
    vosi::VosiInputRecord record;
    for (reader.rewind(); !reader.atEnd(); reader.next()) {
        record.inputWord = 0;
        record.inputCode = 0;
        record.inputKind = 0;
        if (reader.readRecord(record)) {
            record.inputKind = vosi::VosiInputRecord::kFromScript;
            requiredService<vosi::VosiInputQueue>(vosi::kInputQueueKey)->postInput(2, 2, record);
            // Each record runs to its end before the next one is read.
            documentManager()->pumpInput();
        }
    }
}

void playScript(OdAnsiString script) {
    const auto player = autoTest();
    if (player.isNull()) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kVemoRoot, "vemo_root_load_script",
                       "未加载自动测试模块，无法自动化测试");
        return;
    }
    const bool badFormat = player->loadScript(script);
    if (badFormat) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kVemoRoot, "vemo_root_load_script",
                       "自动测试文件格式错误！");
        return;
    }
    if (const auto reader = player->scriptReader()) {
        playRecords(*reader);
    }
}

// ---- first drawing ----

bool openIfThere(const VoJsonPtr& node) {
    const OdAnsiString path = tree::textOr(node, "");
    if (path.isEmpty() || !voutIsExistFile(path)) {
        return false;
    }
    openDocument(path);
    return true;
}

// Files that aren't there are passed over; false when none was opened.
bool openFiles(const VoJsonPtr& files) {
    if (!tree::isArray(files)) {
        return !tree::isObject(files) && openIfThere(files);
    }
    bool opened = false;
    for (int index = 0; index < files.ArrayCount(); ++index) {
        opened = openIfThere(files(index)) || opened;
    }
    return opened;
}

void runWizardIfWanted() {
    if (!tree::boolOr(vo_sys_config("User/openWizard"), false)) {
        return;
    }
    const auto wizard = optionalService<vosi::VosiOpenWizard>(vosi::kOpenWizardKey);
    if (wizard.isNull()) {
        rootlog::write(rootlog::kSurvived, __LINE__, rootlog::kVemoRoot, "vemo_root_open_file",
                       "没有WIZARD模块,无法启用向导创建功能！");
        return;
    }
    wizard->runWizard();
}

bool openTemplate() {
    const OdAnsiString path = commandLineText("template");
    runWizardIfWanted();
    if (path.isEmpty()) {
        return false;
    }
    openDocument(path);
    return true;
}

void newDefaultDrawing() {
    // The node and the text in it have the same name.
    const VoJsonPtr node = vo_user_config("templatePath", 0);
    OdAnsiString path;
    if (node && node->hasProperty("templatePath")) {
        path = tree::textOr(node->getProperty("templatePath"), "");
    }
    run::note([&] { return "a new drawing, template \"" + path + "\""; });
    documentManager()->newDocument(OdUtf8StringToOdString(path), true);
}

}  // namespace

void notifyMainWindowReady() {
    documentManager()->startUp();
    if (const vosi::VosiApRxEventPtr dispatcher = eventDispatcher()) {
        dispatcher->fireMainWindowReady();
    }
}

void loadAliasFile() {
    const VoJsonPtr settings = vo_sys_config("Core/CoreLibrary");
    const auto aliases = optionalService<vosi::VosiAliasMgrSvr>(vosi::kAliasMgrKey);
    if (aliases.isNull()) {
        return;
    }
    const VoJsonPtr file = settings ? settings->getProperty("Alias") : VoJsonPtr();
    aliases->setAliasFile(OdUtf8StringToOdString(tree::textOr(file, "vemo.pgp")));
    aliases->loadAliases();
}

void vemo_root_load_script() {
    const OdAnsiString script = commandLineText("script");
    if (script.isEmpty()) {
        recordIfConfigured();
    } else {
        playScript(script);
    }
}

void connectRemoteDebug() {
    const auto server = optionalService<vosi::VosiRemoteDebugSvr>(vosi::kRemoteDebugSvrKey);
    const auto stub = optionalService<vosi::VosiRemoteDebugStub>(vosi::kRemoteDebugStubKey);
    if (!stub.isNull() && !server.isNull()) {
        server->attachStub(stub->stubHandle());
    }
}

void vemo_root_open_file() {
    const VoJsonPtr options = vo_runtime_config("ExeOption");
    const VoJsonPtr files = options ? options->getProperty("file") : VoJsonPtr();
    const bool opened = files ? openFiles(files) : openTemplate();
    if (!opened) {
        newDefaultDrawing();
    }
}

void applyInsertUnits() {
    vosi::VosiSysVarValue value;
    editSystem()->getSysVar(L"MEASUREINIT", value);
    value.shortValue = value.shortValue == 0 ? kUnitsInches : kUnitsMillimetres;
    editSystem()->setSysVar(L"INSUNITSDEFSOURCE", value, 0, 0);
    editSystem()->setSysVar(L"INSUNITSDEFTARGET", value, 0, 0);
}
