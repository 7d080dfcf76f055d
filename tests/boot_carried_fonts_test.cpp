// A font service of the test's own.
#include "boot_support.h"
#include "support/sfntbuilder.h"
#include "voapfontsservice.h"

using testing::ElementsAre;

namespace {

using FontServiceTest = BootTest;

TEST_F(FontServiceTest, WithoutDispatcherItSaysSoAndServes) {
    bootBare();
    const OdRxObjectPtr kept = odrxSysRegistry()->remove(vosi::kRxEventKey);
    const auto service = OdRxObjectImpl<vosi::VoApFontsService>::createObject();
    odrxSysRegistry()->putAt(vosi::kRxEventKey, kept.get());
    EXPECT_THAT(libraryLog(), ElementsAre("5 voapfontsservice VoApFontsService vsiApRxEvent为空"));
    // A service of its own, which hears no event.
    folder.file("share/fonts/a.shx", fontfile::shx("Drafting86 unifont 1.0"));
    dispatcher()->fireMainWindowReady();
    EXPECT_EQ(utf8(service->findFile("a.shx", nullptr, 2)), "");
    service->scanFonts(vosi::kScanSystemFolders);
    EXPECT_EQ(utf8(service->findFile("a.shx", nullptr, 2)), folder.path("share/fonts/a.shx"));

    service->publishFonts(VoJsonPtr());
    vosi::VoApFontsService::withdrawFonts(VoJsonPtr());
    const VoJsonPtr root = ElementValue::createObject(kElementObject);
    service->publishFonts(root);
    EXPECT_EQ(root->quickGetProperty("Fonts/shx").ArrayCount(), 1);
    vosi::VoApFontsService::withdrawFonts(root);
    EXPECT_EQ(json(root), "{}");
    EXPECT_EQ(service->numRefs(), 1);
}

}  // namespace
