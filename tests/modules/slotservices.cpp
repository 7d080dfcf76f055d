#include "slotservices.h"

#include <string>

#include "slotjournal.h"
#include "slotlibrary.h"

using slots::note;

namespace {

int stubOfDebugger = 0;

// Two records: one that reads and one that doesn't.
constexpr int kRecordCount = 2;

std::string utf8(const OdString& text) {
    return OdStringToUtf8String(text).str();
}

std::string flag(bool value) {
    return value ? "true" : "false";
}

OdRxObjectPtr markerObject() {
    static const OdRxObjectPtr marker = OdRxObjectImpl<vosi::VosiOpenWizard>::createObject();
    return marker;
}

template <class T>
void registerService(const OdChar* key) {
    vo_arbitDict_regservice(key, OdRxObjectImpl<T>::createObject());
}

}  // namespace

namespace vosi {

std::int32_t VosiMainUISvr::slot1() {
    note("MainUI", 1);
    return 0;
}

OdRxObjectPtr VosiDocMgrSvr::slot1() {
    note("DocMgr", 1);
    return slots::currentDocument();
}
void VosiDocMgrSvr::slot2() {
    note("DocMgr", 2);
}
OdRxObjectPtr VosiDocMgrSvr::slot3() {
    note("DocMgr", 3);
    return OdRxObjectImpl<VosiDocumentIterator>::createObject();
}
void VosiDocMgrSvr::slot4(const OdString& templatePath, bool makeCurrent) {
    note("DocMgr", 4, "'" + utf8(templatePath) + "' " + flag(makeCurrent));
}
void VosiDocMgrSvr::slot5(const OdString& path, int mode, int flags) {
    note("DocMgr", 5, utf8(path) + ' ' + std::to_string(mode) + ' ' + std::to_string(flags));
}
void VosiDocMgrSvr::slot6() {
    note("DocMgr", 6);
}
void VosiDocMgrSvr::slot7() {
    note("DocMgr", 7);
}

bool VosiDocumentIterator::slot1() {
    note("Iterator", 1);
    return index >= slots::documents().size();
}
void VosiDocumentIterator::slot2() {
    note("Iterator", 2);
    ++index;
}
OdRxObjectPtr VosiDocumentIterator::slot3() {
    note("Iterator", 3);
    return slots::documents().at(index);
}

OdString VosiDocument::slot1() {
    note("Document", 1);
    return path;
}
OdString VosiDocument::slot2() {
    note("Document", 2);
    return folder;
}
OdSmartPtr<OdDbBaseDatabase> VosiDocument::slot3() {
    note("Document", 3);
    return database;
}
std::uint32_t VosiDocument::slot4() {
    note("Document", 4);
    return 0;
}
OdRxObjectPtr VosiDocument::slot5() {
    note("Document", 5);
    return data;
}

OdRxObject* VosiDocumentData::slot1() {
    note("DocumentData", 1);
    return nullptr;
}
OdRxDictionaryPtr VosiDocumentData::slot2() {
    note("DocumentData", 2);
    return entries;
}

void VosiEditSystemSvr::slot1(const OdString& name, SlotSysVarValue& value, int mode, int flags) {
    note("EditSystem", 1,
         utf8(name) + ' ' + std::to_string(value.words[2]) + ' ' + std::to_string(mode) + ' ' +
             std::to_string(flags));
}
void VosiEditSystemSvr::slot2(const OdString& name, SlotSysVarValue& value) {
    bool zeroed = true;
    for (const std::uintptr_t word : value.words) {
        zeroed = zeroed && word == 0;
    }
    note("EditSystem", 2, utf8(name) + (zeroed ? " zeroed" : " not zeroed"));
    value.words[2] = 1;
}

void VosiAliasMgrSvr::slot1(const OdString& fileName) {
    note("AliasMgr", 1, utf8(fileName));
}
void VosiAliasMgrSvr::slot2() {
    note("AliasMgr", 2);
}

void* VosiRemoteDebugStub::slot1() {
    note("RemoteDebugStub", 1);
    return &stubOfDebugger;
}
void VosiRemoteDebugSvr::slot1(void* stubHandle) {
    note("RemoteDebugSvr", 1, stubHandle == &stubOfDebugger ? "the stub" : "something else");
}

void VosiAutoTestSvr::slot1(OdAnsiString& path) {
    note("AutoTest", 1, path.str());
}
void VosiAutoTestSvr::slot2() {
    note("AutoTest", 2);
}
bool VosiAutoTestSvr::slot3(OdAnsiString& path) {
    note("AutoTest", 3, path.str());
    return false;
}
OdRxObjectPtr VosiAutoTestSvr::slot4() {
    note("AutoTest", 4);
    return OdRxObjectImpl<VosiScriptReader>::createObject();
}

void VosiScriptReader::slot1() {
    note("Reader", 1);
}
void VosiScriptReader::slot2() {
    note("Reader", 2);
    ++record;
}
bool VosiScriptReader::slot3() {
    note("Reader", 3);
    return record == kRecordCount;
}
bool VosiScriptReader::slot4(SlotInputRecord& input) {
    const bool cleared = input.word == 0 && input.code == 0 && input.kind == 0;
    note("Reader", 4, cleared ? "cleared" : "not cleared");
    input.word = 0x123456789a;
    input.code = 77;
    input.kind = 5;
    input.object = markerObject();
    input.extra = markerObject();
    return record == 0;
}

void VosiInputQueue::slot1(int source, int mode, SlotInputRecord& record) {
    const bool whole = record.word == 0x123456789a && record.code == 77 && !record.node &&
                       record.object == markerObject() && record.extra == markerObject();
    note("InputQueue", 1,
         std::to_string(source) + ' ' + std::to_string(mode) + " kind " +
             std::to_string(record.kind) + (whole ? " whole" : " damaged"));
}

int VosiOpenWizard::slot1() {
    note("OpenWizard", 1);
    return 0;
}

OdString VosiFindFontSvr::slot1(const OdString& name, OdDbBaseDatabase* database, int hint) {
    note("FindFonts", 1, utf8(name) + (database ? " database " : " none ") + std::to_string(hint));
    return L"/found/by/position/1";
}
OdString VosiFindFontSvr::slot2(const OdString& /*name*/, OdRxObject* /*document*/, int /*hint*/) {
    note("FindFonts", 2);
    return {};
}
void VosiFindFontSvr::slot3(int /*flags*/) {
    note("FindFonts", 3);
}
void VosiFindFontSvr::slot4(OdRxObject* /*document*/) {
    note("FindFonts", 4);
}
bool VosiFindFontSvr::slot5(const OdTtfDescriptor& /*descriptor*/, OdString& /*fileName*/) {
    note("FindFonts", 5);
    return false;
}

}  // namespace vosi

namespace slots {

void registerServices() {
    registerService<vosi::VosiMainUISvr>(L"Vemo/MainUI");
    registerService<vosi::VosiDocMgrSvr>(L"Core/DocMgr");
    registerService<vosi::VosiEditSystemSvr>(L"Core/EditSystemServer");
    registerService<vosi::VosiAliasMgrSvr>(L"Core/AliasMgrSvr");
    registerService<vosi::VosiRemoteDebugSvr>(L"Core/RemoteDebugSvr");
    registerService<vosi::VosiRemoteDebugStub>(L"Core/RemoteDebugStub");
    registerService<vosi::VosiAutoTestSvr>(L"Core/AutoTestSvr");
    registerService<vosi::VosiInputQueue>(L"Core/InputQueue");
    registerService<vosi::VosiOpenWizard>(L"Core/OpenWizard");
}

OdArray<OdSmartPtr<vosi::VosiDocument>>& documents() {
    static OdArray<OdSmartPtr<vosi::VosiDocument>> open;
    return open;
}

OdSmartPtr<vosi::VosiDocument>& currentDocument() {
    static OdSmartPtr<vosi::VosiDocument> current;
    return current;
}

}  // namespace slots
