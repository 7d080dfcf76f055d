// What the tests of the font and file search share: an application without modules, a drawing with
// its document, and fonts made for the test.
#pragma once

#include <filesystem>

#include "boot_support.h"
#include "core/vosifindfontsvr.h"
#include "support/sfntbuilder.h"
#include "support/testdocuments.h"

/// Files are looked for from the working folder "work", for a drawing in "drawings" whose document
/// has the folder "companion". The only font folder of the system is "share/fonts". Paths in
/// answers are given without the test's folder in front.
class FinderTest : public BootTest {
  protected:
    FinderTest() {
        std::filesystem::current_path(folder.folder("work"));
        for (const char* name : {"drawings", "companion", "share/fonts"}) {
            folder.folder(name);
        }
    }

    /// Provides the document manager with the drawing's document, which isn't the active one.
    void openDrawing() {
        database = vodbSystemServices()->createDatabase(true, 0);
        database->setFilename(wide(folder.path("drawings/plan.dwg")));
        document->path = database->getFilename();
        document->folder = wide(folder.path("companion"));
        document->database = database;
        document->data = OdRxObjectImpl<TestDocumentData>::createObject();
        documents->documents = {OdRxObjectImpl<TestDocument>::createObject(), document};
        vo_arbitDict_regservice(vosi::kDocMgrKey, documents);
    }

    static OdString wide(const std::string& text) { return OdUtf8StringToOdString(text); }

    std::string local(const std::string& path) const {
        const std::string top = folder.path("");
        return path.starts_with(top) ? path.substr(top.size()) : path;
    }
    std::string local(const OdString& path) const { return local(utf8(path)); }

    /// Folders of the Runtime tree, as they are without evaluation.
    static void setPaths(const char* key, std::initializer_list<std::string> folders) {
        vo_runtime_config("")->makePath("paths")->set_propertyJ(key, textArray(folders));
    }

    static vosi::VosiFindFontSvrPtr fonts() { return vo_arbitDict_getservice(vosi::kFindFontsKey); }

    // ---- fonts ----

    std::string unifont(const std::string& name) const {
        return folder.file(name, fontfile::shx("Drafting86 unifont 1.0"));
    }
    std::string bigfont(const std::string& name) const {
        return folder.file(name, fontfile::shx("Drafting86 bigfont 1.0"));
    }
    std::string trueType(const std::string& name, const std::string& typeface,
                         const std::string& style = "Regular") const {
        return folder.file(name, fontfile::sfnt(named(typeface, style)));
    }
    static fontfile::Face named(const std::string& typeface, const std::string& style = "Regular") {
        return {{fontfile::family(typeface), fontfile::subfamily(style)}};
    }

    static void scanSystemFolders() { fonts()->scanFonts(vosi::kScanSystemFolders); }

    /// What the tree shows: paths under "shx" and "bigfont".
    std::vector<std::string> indexed(const std::string& property) const {
        return textsOf(property, "path");
    }
    std::vector<std::string> typefaces() const { return textsOf("ttf", "facename/default"); }

    OdDbDatabasePtr database;
    TestDocumentPtr document = OdRxObjectImpl<TestDocument>::createObject();
    OdSmartPtr<TestDocuments> documents = OdRxObjectImpl<TestDocuments>::createObject();

  private:
    std::vector<std::string> textsOf(const std::string& property, const char* member) const {
        std::vector<std::string> texts;
        const VoJsonPtr list = vo_runtime_config("Fonts/" + property);
        for (int index = 0; index < list.ArrayCount(); ++index) {
            texts.push_back(local(list(index)->quickGetProperty(member)->strValue().str()));
        }
        return texts;
    }
};

inline OdTtfDescriptor faceOf(const OdString& typeface, bool bold, bool italic,
                              const OdString& fileName = {}) {
    OdTtfDescriptor face;
    face.typeface = typeface;
    face.fileName = fileName;
    face.setBold(bold);
    face.setItalic(italic);
    return face;
}
