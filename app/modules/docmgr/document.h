// An open document: a drawing with its file, its database and its dictionary.
#pragma once

#include <string>

#include <core/vomoduleservices.h>

#include "dxfdrawing.h"

namespace vemoapp {

class Document;

/// What a document keeps beside its drawing. It may outlive the document, which then is gone from
/// it.
class DocumentData : public vosi::VosiDocumentData {
  public:
    DocumentData();

    OdRxObject* owner() override { return document; }
    OdRxDictionaryPtr dictionary() override { return entries; }

    void setOwner(OdRxObject* newOwner) { document = newOwner; }

  private:
    OdRxObject* document = nullptr;
    OdRxDictionaryPtr entries;
};

/// Used on the interface thread. The path and the database are set once, after construction.
class Document : public vosi::VosiDocument {
  public:
    Document();
    ~Document() override;

    OdString documentFilePath() override { return filePath; }
    /// Ends in its separator, as the search for files expects it of folders.
    OdString documentFolder() override;
    OdSmartPtr<OdDbBaseDatabase> documentDatabase() override { return database; }
    std::uint32_t documentStateBits() override { return filePath.isEmpty() ? kUnnamed : 0; }
    OdSmartPtr<vosi::VosiDocumentData> documentData() override { return data; }

    /// Fills the document. An empty path means that the drawing has no file of its own; `title` is
    /// then its name. Makes the database, which raises what the host services raise.
    void assign(const std::string& title, const OdString& path, const DxfDrawing& drawing);

    const std::string& title() const { return name; }
    const DxfDrawing& content() const { return drawing; }

  private:
    std::string name;
    OdString filePath;
    DxfDrawing drawing;
    OdDbDatabasePtr database;
    OdSmartPtr<DocumentData> data;
};

using DocumentPtr = OdSmartPtr<Document>;

}  // namespace vemoapp
