// The index of file names, and a font service of the test's own.
#include <locale.h>

#include <clocale>
#include <random>

#include "boot_support.h"
#include "support/sfntbuilder.h"
#include "voapfontsservice.h"

using testing::ElementsAre;

namespace {

// Short texts of few characters, so that names meet often: letters in both cases within ASCII and
// beyond, letters whose case is peculiar, separators and the text's end.
OdString randomText(std::mt19937& random, std::size_t longest) {
    static constexpr std::wstring_view characters{L"aAbB.äÄßẞiıİσςΣ/\\\0", 18};
    std::wstring text(random() % (longest + 1), L' ');
    for (wchar_t& character : text) {
        character = characters[random() % characters.size()];
    }
    return OdString(std::wstring_view(text));
}

// Answers always as the plain search does, while the list grows and the locale changes.
TEST(FileNameIndex, AgreesWithTheSearchThroughTheList) {
    const locale_t ofThread = newlocale(LC_CTYPE_MASK, "C.utf8", nullptr);
    ASSERT_TRUE(ofThread);
    int found = 0;
    for (unsigned int seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        OdStringArray list;
        vosi::FileNameIndex index;
        for (int step = 0; step < 300; ++step) {
            switch (random() % 16) {
                case 0:
                    std::setlocale(LC_CTYPE, random() % 2 == 0 ? "C" : "C.utf8");
                    break;
                case 1:
                    uselocale(random() % 2 == 0 ? ofThread : LC_GLOBAL_LOCALE);
                    break;
                case 2:
                case 3:
                    list.append(randomText(random, 6));
                    break;
                default:
                    break;
            }
            const OdString name = randomText(random, 3);
            const OdString answer = vosi::findByFileName(name, list);
            ASSERT_EQ(index.find(name, list), answer) << "seed " << seed;
            found += answer.isEmpty() ? 0 : 1;
        }
    }
    EXPECT_GT(found, 1000);
    uselocale(LC_GLOBAL_LOCALE);
    std::setlocale(LC_CTYPE, "C");
    freelocale(ofThread);
}

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
