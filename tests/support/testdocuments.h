// Documents as a module would provide them: a manager, its documents and what they carry. All state
// is open to the test.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "core/vomoduleservices.h"
#include "core/vosifontlists.h"

/// Can be made while the runtime is up.
class TestDocumentData : public vosi::VosiDocumentData {
  public:
    OdRxObject* owner() override { return nullptr; }
    OdRxDictionaryPtr dictionary() override { return entries; }

    OdRxDictionaryPtr entries = OdRxDictionary::desc()->create();
};

class TestDocument : public vosi::VosiDocument {
  public:
    OdString documentFilePath() override { return path; }
    OdString documentFolder() override { return folder; }
    OdSmartPtr<OdDbBaseDatabase> documentDatabase() override { return database; }
    std::uint32_t documentStateBits() override { return stateBits; }
    OdSmartPtr<vosi::VosiDocumentData> documentData() override { return data; }

    /// Puts a list of font files under the key.
    void carry(const OdChar* key, std::initializer_list<OdString> fontPaths) {
        carryList<vosi::VosiMapShxFont>(key, fontPaths);
    }
    void carryFaces(std::initializer_list<OdTtfDescriptor> faces) {
        carryList<vosi::VosiMapTrueTypeFont>(L"FontTTF", faces);
    }

    OdString path;
    OdString folder;
    OdSmartPtr<OdDbBaseDatabase> database;
    std::uint32_t stateBits = 0;
    OdSmartPtr<TestDocumentData> data;

  private:
    template <class List, class Entry>
    void carryList(const OdChar* key, std::initializer_list<Entry> entries) {
        const auto list = OdRxObjectImpl<List>::createObject();
        for (const Entry& entry : entries) {
            list->append(entry);
        }
        data->entries->putAt(key, list.get());
    }
};

using TestDocumentPtr = OdSmartPtr<TestDocument>;

class TestDocumentWalk : public vosi::VosiDocumentIterator {
  public:
    bool done() override { return place == documents.size(); }
    void next() override { ++place; }
    OdRxObjectPtr object() override { return documents.at(place); }

    std::vector<TestDocumentPtr> documents;

  private:
    std::size_t place = 0;
};

class TestDocuments : public vosi::VosiDocMgrSvr {
  public:
    OdSmartPtr<vosi::VosiDocument> activeDocument() override { return active; }
    void pumpInput() override {}
    OdSmartPtr<vosi::VosiDocumentIterator> newDocumentIterator() override {
        const auto walk = OdRxObjectImpl<TestDocumentWalk>::createObject();
        walk->documents = documents;
        return walk;
    }
    void newDocument(const OdString&, bool) override {}
    void openDocument(const OdString&, int, int) override {}
    void startUp() override {}
    void shutDown() override {}

    TestDocumentPtr active;
    std::vector<TestDocumentPtr> documents;
};
