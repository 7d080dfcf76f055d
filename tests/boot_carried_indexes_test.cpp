// What is made faster plays here against the plain definition, on random inputs.
#include <locale.h>

#include <clocale>
#include <random>
#include <string>
#include <vector>

#include "boot_support.h"
#include "facematch.h"
#include "fontindex.h"
#include "fontscan.h"

#include <utils/paths.h>

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

// ---- faces by their description ----

using vosi::Faces;

OdTtfDescriptor randomFace(std::mt19937& random) {
    static constexpr const wchar_t* kNames[] = {L"Sans", L"Song", L"NSong", L"ong", L"", L"song"};
    OdTtfDescriptor face;
    face.typeface = kNames[random() % std::size(kNames)];
    while (random() % 4 == 0) {
        face.typeface = face.typeface + L" & " + kNames[random() % std::size(kNames)];
    }
    face.setBold(random() % 3 == 0);
    face.setItalic(random() % 3 == 0);
    // Other bits say nothing.
    face.flags |= static_cast<std::uint32_t>(random() % 4);
    return face;
}

bool matchesFirst(const OdTtfDescriptor& face, const OdTtfDescriptor& key) {
    if (face.typeface.view().find(L" & ") != std::wstring_view::npos) {
        return face.typeface.view().find(key.typeface.view()) != std::wstring_view::npos;
    }
    return face.typeface == key.typeface && face.isBold() == key.isBold() &&
           face.isItalic() == key.isItalic();
}

std::string walkedTo(const OdTtfDescriptor& key, const Faces& list) {
    for (const OdTtfDescriptor& face : list) {
        if (matchesFirst(face, key)) {
            return utf8(face.fileName);
        }
    }
    for (const OdTtfDescriptor& face : list) {
        if ((key.isBold() || key.isItalic()) && face.typeface == key.typeface) {
            return utf8(face.fileName);
        }
    }
    return "none";
}

template <class Match>
std::string matched(Match&& match) {
    OdString fileName = L"none";
    const bool found = match(fileName);
    EXPECT_EQ(found, fileName != L"none");
    return utf8(fileName);
}

TEST(FaceIndex, AgreesWithTheWalkThroughTheList) {
    int found = 0;
    for (unsigned int seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        Faces list;
        vosi::FaceIndex index;
        for (int step = 0; step < 100; ++step) {
            if (random() % 4 == 0) {
                OdTtfDescriptor face = randomFace(random);
                face.fileName = OdUtf8StringToOdString(std::to_string(list.size()));
                list.append(face);
            }
            const OdTtfDescriptor key = randomFace(random);
            const std::string expected = walkedTo(key, list);
            ASSERT_EQ(matched([&](OdString& name) { return index.match(key, name, list); }),
                      expected)
                << "seed " << seed;
            ASSERT_EQ(
                matched([&](OdString& name) { return vosi::matchDescriptor(key, name, list); }),
                expected)
                << "seed " << seed;
            found += expected == "none" ? 0 : 1;
        }
    }
    EXPECT_GT(found, 10000);
}

// ---- font files below folders ----

std::string randomFileName(std::mt19937& random) {
    static constexpr const char* kPieces[] = {
        "a",    "B",        "b", "ab", ".", "\xC3\x84",    "\xC3\xA4",
        "\xFF", "\xC5\xBF", "1", "10", " ", "\xE2\x84\xAA"};
    static constexpr const char* kEndings[] = {".shx",  ".SHX",        ".shp",    ".ttf",
                                               ".TtF",  ".ttc",        ".otf",    "shx",
                                               ".ttfx", ".\xC5\xBFhx", ".ttc.ttf"};
    std::string name;
    for (auto count = random() % 4; count > 0; --count) {
        name += kPieces[random() % std::size(kPieces)];
    }
    name += kEndings[random() % std::size(kEndings)];
    return name;
}

void fillFolder(const TestFolder& top, const std::string& folder, std::mt19937& random,
                int levels) {
    for (auto count = random() % 12; count > 0; --count) {
        const std::string name = folder + '/' + randomFileName(random);
        if (std::filesystem::exists(top.path(name))) {
            continue;
        }
        if (levels > 0 && random() % 3 == 0) {
            top.folder(name);
            fillFolder(top, name, random, levels - 1);
        } else {
            top.file(name);
        }
    }
}

TEST(FoundFontFiles, AreThoseOfAWalkForEachExtension) {
    std::size_t found = 0;
    for (unsigned int seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        const TestFolder folder;
        fillFolder(folder, "top", random, 3);
        const OdString top = OdUtf8StringToOdString(folder.path("top"));
        const vosi::PathEntries entries{{top, static_cast<int>(random() % 4)},
                                        {top + L"/", 1},
                                        {top, 4},
                                        {OdUtf8StringToOdString(folder.path("missing")), 2}};
        OdArray<OdAnsiString> shx;
        OdArray<OdAnsiString> trueType;
        for (const std::size_t entry : {0u, 1u, 3u}) {
            const OdAnsiString path = OdStringToUtf8String(entries[entry].path);
            voutGlobNoCaseSensitive2(path, "*.shx", shx, entries[entry].depth);
            voutGlobNoCaseSensitive2(path, "*.shp", shx, entries[entry].depth);
            voutGlobNoCaseSensitive2(path, "*.ttc", trueType, entries[entry].depth);
            voutGlobNoCaseSensitive2(path, "*.ttf", trueType, entries[entry].depth);
        }
        const vosi::FontFiles files = vosi::fontFilesBelow(entries);
        ASSERT_TRUE(std::equal(shx.begin(), shx.end(), files.shx.begin(), files.shx.end()))
            << "seed " << seed;
        ASSERT_TRUE(std::equal(trueType.begin(), trueType.end(), files.trueType.begin(),
                               files.trueType.end()))
            << "seed " << seed;
        found += files.shx.size() + files.trueType.size();
    }
    EXPECT_GT(found, 500u);
}

}  // namespace
