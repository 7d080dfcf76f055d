// The services that the library calls by position, declared here for themselves: what counts is the
// order of the operations, each of which notes its position and its arguments.
//
// The classes carry the names by which the library knows them, since a sanitizer that checks an
// object's class compares names.
#pragma once

#include <cstdint>

#include <drawing/runtime.h>

namespace vosi {

class VosiMainUISvr : public OdRxObject {
  public:
    virtual std::int32_t slot1();
};

class VosiDocMgrSvr : public OdRxObject {
  public:
    virtual OdRxObjectPtr slot1();
    virtual void slot2();
    virtual OdRxObjectPtr slot3();
    virtual void slot4(const OdString& templatePath, bool makeCurrent);
    virtual void slot5(const OdString& path, int mode, int flags);
    virtual void slot6();
    virtual void slot7();
};

class VosiDocumentIterator : public OdRxObject {
  public:
    virtual bool slot1();
    virtual void slot2();
    virtual OdRxObjectPtr slot3();

  private:
    unsigned int index = 0;
};

class VosiDocumentData : public OdRxObject {
  public:
    virtual OdRxObject* slot1();
    virtual OdRxDictionaryPtr slot2();

    OdRxDictionaryPtr entries = OdRxDictionary::desc()->create();
};

class VosiDocument : public OdRxObject {
  public:
    virtual OdString slot1();
    virtual OdString slot2();
    virtual OdSmartPtr<OdDbBaseDatabase> slot3();
    virtual std::uint32_t slot4();
    virtual OdRxObjectPtr slot5();

    OdString path;
    OdString folder;
    OdSmartPtr<VosiDocumentData> data;
    OdSmartPtr<OdDbBaseDatabase> database;
};

struct SlotSysVarValue {
    std::uintptr_t words[5];
};

class VosiEditSystemSvr : public OdRxObject {
  public:
    virtual void slot1(const OdString& name, SlotSysVarValue& value, int mode, int flags);
    virtual void slot2(const OdString& name, SlotSysVarValue& value);
};

class VosiAliasMgrSvr : public OdRxObject {
  public:
    virtual void slot1(const OdString& fileName);
    virtual void slot2();
};

class VosiRemoteDebugStub : public OdRxObject {
  public:
    virtual void* slot1();
};

class VosiRemoteDebugSvr : public OdRxObject {
  public:
    virtual void slot1(void* stubHandle);
};

class VosiAutoTestSvr : public OdRxObject {
  public:
    virtual void slot1(OdAnsiString& path);
    virtual void slot2();
    virtual bool slot3(OdAnsiString& path);
    virtual OdRxObjectPtr slot4();
};

struct SlotInputRecord {
    std::uintptr_t word;
    std::uint32_t code;
    std::uint32_t kind;
    OdRxObjectPtr object;
    void* node;
    OdRxObjectPtr extra;
};

class VosiScriptReader : public OdRxObject {
  public:
    virtual void slot1();
    virtual void slot2();
    virtual bool slot3();
    virtual bool slot4(SlotInputRecord& record);

  private:
    int record = 0;
};

class VosiInputQueue : public OdRxObject {
  public:
    virtual void slot1(int source, int mode, SlotInputRecord& record);
};

class VosiOpenWizard : public OdRxObject {
  public:
    virtual int slot1();
};

class VosiFindFontSvr : public OdRxObject {
  public:
    virtual OdString slot1(const OdString& name, OdDbBaseDatabase* database, int hint);
    virtual OdString slot2(const OdString& name, OdRxObject* document, int hint);
    virtual void slot3(int flags);
    virtual void slot4(OdRxObject* document);
    virtual bool slot5(const OdTtfDescriptor& descriptor, OdString& fileName);
};

/// What a document carries under the keys of its fonts.
class VosiMapShxFont : public OdRxObject, public OdArray<OdString, OdObjectsAllocator<OdString>> {};
class VosiMapTrueTypeFont : public OdRxObject,
                            public OdArray<OdTtfDescriptor, OdObjectsAllocator<OdTtfDescriptor>> {};

}  // namespace vosi

namespace slots {

/// Registers the services that start-up and the actions behind the main window call.
void registerServices();

/// The documents that the document manager's iterator walks over; empty at first.
OdArray<OdSmartPtr<vosi::VosiDocument>>& documents();

/// The document manager's current document; null at first.
OdSmartPtr<vosi::VosiDocument>& currentDocument();

}  // namespace slots
