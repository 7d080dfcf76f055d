// The font search service by position: the library's own, asked for files, and one of this module
// in its place. The setting "folder" names the test's folder.
#include "slotchecks.h"
#include "slotjournal.h"
#include "slotlibrary.h"
#include "slotservices.h"

using slots::call;
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
    return document;
}

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
