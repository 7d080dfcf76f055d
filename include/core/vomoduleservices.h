// Services that modules provide and the library calls by position.
//
// In each class the operations stand in the order in which the library counts them, behind those of
// OdRxObject; a provider derives from the class and adds its own operations behind. All are called
// on the interface thread. A provider registers its object under the key named with the class and
// keeps no reference of its own unless it says so; results of the runtime's smart pointers carry a
// reference. What an operation raises leaves the start-up or shut-down step that called it.
#pragma once

#include <cstdint>

#include <drawing/runtime.h>
#include <utils/elementvaluebase.h>

namespace vosi {

/// "Vemo/MainUI": the main window.
class VosiMainUISvr : public OdRxObject {
  public:
    /// Puts the window up and returns: 0 for success, any other value ends start-up with it.
    virtual std::int32_t showMainWindow() = 0;
};

/// What a document keeps beside its drawing.
class VosiDocumentData : public OdRxObject {
  public:
    /// The document that this belongs to, without a reference.
    virtual OdRxObject* owner() = 0;
    virtual OdRxDictionaryPtr dictionary() = 0;
};

/// One open document.
class VosiDocument : public OdRxObject {
  public:
    /// Bit 0 of documentStateBits: the document has no file of its own.
    static constexpr std::uint32_t kUnnamed = 1;

    /// Full path of the drawing, empty while it has none.
    virtual OdString documentFilePath() = 0;
    /// A folder in which the drawing's companion files are looked for; may be empty.
    virtual OdString documentFolder() = 0;
    virtual OdSmartPtr<OdDbBaseDatabase> documentDatabase() = 0;
    virtual std::uint32_t documentStateBits() = 0;
    virtual OdSmartPtr<VosiDocumentData> documentData() = 0;
};

/// A walk over the open documents.
class VosiDocumentIterator : public OdRxObject {
  public:
    virtual bool done() = 0;
    virtual void next() = 0;
    virtual OdRxObjectPtr object() = 0;
};

/// "Core/DocMgr": the document manager.
class VosiDocMgrSvr : public OdRxObject {
  public:
    /// The current document, null when none is open.
    virtual OdSmartPtr<VosiDocument> activeDocument() = 0;
    /// Runs what the input queue holds; may switch fibers.
    virtual void pumpInput() = 0;
    virtual OdSmartPtr<VosiDocumentIterator> newDocumentIterator() = 0;
    /// Opens a new drawing made from a template, whose path may be empty. `makeCurrent` is true.
    virtual void newDocument(const OdString& templatePath, bool makeCurrent) = 0;
    /// Opens a drawing; a file that is none is the manager's to report. The last two are 0.
    virtual void openDocument(const OdString& path, int mode, int flags) = 0;
    /// Called once when the main window is up.
    virtual void startUp() = 0;
    /// Called once at the end, directly after the exit event: closes the documents.
    virtual void shutDown() = 0;
};

/// The value of a system variable: five machine words, zeroed by the caller, with a 16-bit integer
/// at the head of the third.
struct VosiSysVarValue {
    std::uintptr_t word1 = 0;
    std::uintptr_t word2 = 0;
    union {
        std::int16_t shortValue;
        std::uintptr_t word3 = 0;
    };
    std::uintptr_t word4 = 0;
    std::uintptr_t word5 = 0;
};
static_assert(sizeof(VosiSysVarValue) == 5 * sizeof(std::uintptr_t));

/// "Core/EditSystemServer": system variables by name.
class VosiEditSystemSvr : public OdRxObject {
  public:
    /// The last two are 0.
    virtual void setSysVar(const OdString& name, VosiSysVarValue& value, int mode, int flags) = 0;
    virtual void getSysVar(const OdString& name, VosiSysVarValue& value) = 0;
};

/// "Core/AliasMgrSvr": command aliases.
class VosiAliasMgrSvr : public OdRxObject {
  public:
    virtual void setAliasFile(const OdString& fileName) = 0;
    virtual void loadAliases() = 0;
};

/// "Core/RemoteDebugStub".
class VosiRemoteDebugStub : public OdRxObject {
  public:
    /// An opaque value for the server.
    virtual void* stubHandle() = 0;
};

/// "Core/RemoteDebugSvr".
class VosiRemoteDebugSvr : public OdRxObject {
  public:
    virtual void attachStub(void* stubHandle) = 0;
};

/// One step of recorded input. The library clears the first three fields before each read and owns
/// the record through the whole playback.
struct VosiInputRecord {
    /// `inputKind` of a record that comes from a script.
    static constexpr std::uint32_t kFromScript = 6;

    std::uintptr_t inputWord = 0;
    std::uint32_t inputCode = 0;
    std::uint32_t inputKind = 0;
    OdRxObjectPtr inputObject;
    VoJsonPtr inputNode;
    OdRxObjectPtr inputExtra;
};

/// A walk over the records of a loaded script.
class VosiScriptReader : public OdRxObject {
  public:
    virtual void rewind() = 0;
    virtual void next() = 0;
    /// True past the last record.
    virtual bool atEnd() = 0;
    /// True when a record was read into the argument.
    virtual bool readRecord(VosiInputRecord& record) = 0;
};

/// "Core/AutoTestSvr": records input to a file and plays it back. Paths are UTF-8.
class VosiAutoTestSvr : public OdRxObject {
  public:
    virtual void setRecordFile(OdAnsiString& path) = 0;
    virtual void startRecording() = 0;
    /// True when the script could not be taken: its format is bad.
    virtual bool loadScript(OdAnsiString& path) = 0;
    /// A reader of the loaded script, null when there is none.
    virtual OdSmartPtr<VosiScriptReader> scriptReader() = 0;
};

/// "Core/InputQueue": the interface's input. The integers are 2 and 2 for what a script plays.
class VosiInputQueue : public OdRxObject {
  public:
    virtual void postInput(int source, int mode, VosiInputRecord& record) = 0;
};

/// "Core/OpenWizard": asks how the first drawing is to be made.
class VosiOpenWizard : public OdRxObject {
  public:
    virtual int runWizard() = 0;
};

}  // namespace vosi
