// The document manager: opens drawings, makes new ones and keeps what is open.
#pragma once

#include <vector>

#include "document.h"

namespace vemoapp {

/// A walk over the documents that were open when it began.
class DocumentIterator : public vosi::VosiDocumentIterator {
  public:
    void setDocuments(const std::vector<DocumentPtr>& open) { documents = open; }

    bool done() override { return index >= documents.size(); }
    void next() override { ++index; }
    OdRxObjectPtr object() override;

  private:
    std::vector<DocumentPtr> documents;
    std::size_t index = 0;
};

/// "Core/DocMgr". Used on the interface thread. A drawing that can't be opened is answered with a
/// message to the user and changes nothing.
class DocumentManager : public vosi::VosiDocMgrSvr {
  public:
    OdSmartPtr<vosi::VosiDocument> activeDocument() override { return active; }
    void pumpInput() override;
    OdSmartPtr<vosi::VosiDocumentIterator> newDocumentIterator() override;
    /// A template that can't be read leaves the new drawing empty.
    void newDocument(const OdString& templatePath, bool makeCurrent) override;
    /// Looks the name up as the host services look up any file. A drawing that is open already
    /// becomes the current one.
    void openDocument(const OdString& path, int mode, int flags) override;
    /// Adds the commands OPEN, NEW and STATUS.
    void startUp() override;
    void shutDown() override;

  private:
    void open(const OdString& name);
    bool activateIfOpen(const OdString& path);
    void addDocument(const std::string& title, const OdString& path, const DxfDrawing& drawing,
                     bool makeCurrent);
    void showStatus() const;

    std::vector<DocumentPtr> documents;
    DocumentPtr active;
    int newDrawings = 0;
};

}  // namespace vemoapp
