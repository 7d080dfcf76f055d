// The font search service by position: the library's own, asked for files, and one of this module
// in its place. The setting "folder" names the test's folder.
#include <functional>

#include "slotchecks.h"
#include "slotjournal.h"
#include "slotlibrary.h"
#include "slotservices.h"

using slots::call;
using slots::callNode;
using slots::NodePtr;
using slots::ofService;

namespace {

using Name = const OdString&;

OdString pathTo(const char* name) {
    return OdUtf8StringToOdString(journal::setting("folder") + '/' + name);
}

OdSmartPtr<vosi::VosiDocument> newDocument(const OdString& folder) {
    auto document = OdRxObjectImpl<vosi::VosiDocument>::createObject();
    document->folder = folder;
    document->database = OdSmartPtr<OdDbBaseDatabase>(vodbSystemServices()->createDatabase());
    document->data = OdRxObjectImpl<vosi::VosiDocumentData>::createObject();
    return document;
}

template <class List, class Entry>
void carry(vosi::VosiDocument& document, const OdChar* key, const Entry& entry) {
    const auto list = OdRxObjectImpl<List>::createObject();
    list->append(entry);
    document.data->entries->putAt(key, list.get());
}

int countOfFonts() {
    return callNode<int()>(vo_runtime_config("Fonts/shx"), 6);
}

/// What the table of computed properties holds.
struct Property {
    const char* name;
    std::function<NodePtr(const void*)> compute;
};

OdString findForDatabase(const OdRxObjectPtr& fonts, Name name, OdDbBaseDatabase* database) {
    return call<OdString(Name, OdDbBaseDatabase*, int)>(fonts.get(), ofService(1), name, database,
                                                        0);
}

}  // namespace

SLOT_CHECK(checkFindFontSlots) {
    const OdRxObjectPtr fonts = vo_arbitDict_getservice(L"Core/FindFonts");
    EXPECT_EQ(findForDatabase(fonts, pathTo("SUPPORT/dashes.LIN"), nullptr),
              pathTo("support/Dashes.lin"));
    EXPECT_EQ(findForDatabase(fonts, L"dashes.lin", nullptr), L"");

    const auto document = newDocument(pathTo("support/"));
    using FindInDocument = OdString(Name, OdRxObject*, int);
    EXPECT_EQ(call<FindInDocument>(fonts.get(), ofService(2), L"dashes.lin", document.get(), 0),
              pathTo("support/Dashes.lin"));
}

SLOT_CHECK(checkFontScanSlots) {
    const OdRxObjectPtr fonts = vo_arbitDict_getservice(L"Core/FindFonts");
    EXPECT_EQ(countOfFonts(), 1);
    call<void(int)>(fonts.get(), ofService(3), 1);
    EXPECT_EQ(countOfFonts(), 2);

    const auto document = newDocument(OdString());
    document->path = pathTo("plan.dwg");
    journal::clear();
    call<void(OdRxObject*)>(fonts.get(), ofService(4), document.get());
    EXPECT_EQ(journal::lines(), (std::vector<std::string>{"Document 4", "Document 1", "Document 5",
                                                          "DocumentData 2"}));
    EXPECT_EQ(document->data->entries->numEntries(), 3u);
}

SLOT_CHECK(checkFontMatchSlots) {
    const OdRxObjectPtr fonts = vo_arbitDict_getservice(L"Core/FindFonts");
    OdTtfDescriptor face;
    face.typeface = L"Sans";
    face.fileName = L"/document/sans.ttf";
    const auto document = newDocument(OdString());
    carry<vosi::VosiMapTrueTypeFont>(*document, L"FontTTF", face);
    carry<vosi::VosiMapShxFont>(*document, L"FontMainShx", OdString(L"/document/main.shx"));
    slots::currentDocument() = document;
    journal::clear();
    OdString fileName;
    EXPECT_TRUE(
        (call<bool(const OdTtfDescriptor&, OdString&)>(fonts.get(), ofService(5), face, fileName)));
    EXPECT_EQ(fileName, L"/document/sans.ttf");
    EXPECT_EQ(journal::lines(),
              (std::vector<std::string>{"DocMgr 1", "Document 5", "DocumentData 2"}));
    using FindInDocument = OdString(Name, OdRxObject*, int);
    EXPECT_EQ(call<FindInDocument>(fonts.get(), ofService(2), L"MAIN.shx", document.get(), 2),
              L"/document/main.shx");
    slots::currentDocument().release();
}

SLOT_CHECK(checkFontPropertySlots) {
    const OdRxObjectPtr fonts = vo_arbitDict_getservice(L"Core/FindFonts");
    const NodePtr node = vo_runtime_config("Fonts");
    int count = 0;
    const auto* table = call<const Property*(int&)>(fonts.get(), ofService(6), count);
    ASSERT_EQ(count, 5);
    EXPECT_STREQ(table[1].name, "bigfont");
    EXPECT_EQ(callNode<int()>(table[0].compute(node.get()), 6), 1);
    call<void()>(fonts.get(), ofService(7));
    count = 0;
    EXPECT_EQ((callNode<const Property*(int&)>(node, 51, count)), table);
    EXPECT_EQ(count, 5);
    EXPECT_EQ(countOfFonts(), 1);
}

SLOT_CHECK(checkDocumentSlots) {
    const OdRxObjectPtr fonts = vo_arbitDict_getservice(L"Core/FindFonts");
    const auto document = newDocument(pathTo("support/"));
    slots::documents().append(newDocument(pathTo("elsewhere/")));
    slots::documents().append(document);
    journal::clear();

    EXPECT_EQ(findForDatabase(fonts, L"dashes.lin", document->database.get()),
              pathTo("support/Dashes.lin"));
    const std::vector<std::string> calls{"DocMgr 3",   "Iterator 1", "Iterator 3",
                                         "Document 3", "Iterator 2", "Iterator 1",
                                         "Iterator 3", "Document 3", "Document 2"};
    EXPECT_EQ(journal::lines(), calls);
    slots::documents().clear();
}

SLOT_CHECK(checkProvidedFindFont) {
    vo_arbitDict_regservice(L"Core/FindFonts",
                            OdRxObjectImpl<vosi::VosiFindFontSvr>::createObject());
    journal::clear();
    EXPECT_EQ(vodbSystemServices()->findFile(L"txt.shx", nullptr,
                                             OdDbBaseHostAppServices::kCompiledShapeFile),
              L"/found/by/position/1");
    EXPECT_EQ(journal::lines(), std::vector<std::string>{"FindFonts 1 txt.shx none 2"});
}
