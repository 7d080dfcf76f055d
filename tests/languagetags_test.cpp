#include "languagetags.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

struct Row {
    std::uint16_t id;
    std::string language;
    std::string country;
    std::string script;
    int codePage;
};

const std::vector<Row> kRows = {
#define LANGUAGE(id, language, country, script, codePage) {id, language, country, script, codePage},
#include "languagetags.def"
#undef LANGUAGE
};

std::string tag(std::uint16_t id) {
    return OdStringToUtf8String(vosi::languageTag(id)).str();
}

TEST(LanguageTags, EveryRowGivesItsTag) {
    std::set<std::uint16_t> ids;
    for (const Row& row : kRows) {
        ids.insert(row.id);
        EXPECT_EQ(tag(row.id), row.language + "-" + row.country);
    }
    EXPECT_EQ(ids.size(), 201);
    // Told one by one: the ends of the table, and rows whose codes aren't the usual ones.
    EXPECT_EQ(tag(0x0436), "af-ZA");
    EXPECT_EQ(tag(0x0435), "zu-ZA");
    EXPECT_EQ(tag(2052), "zh-CN");
    EXPECT_EQ(tag(1028), "zh-TW");
    EXPECT_EQ(tag(0x082c), "az-Cyrl-AZ");
    EXPECT_EQ(tag(0x040a), "es-ES_tradnl");
    EXPECT_EQ(tag(0x2409), "en-029");
    EXPECT_EQ(tag(0x048c), "gb-AF");
    EXPECT_EQ(tag(0x0457), "ko-IN");
}

TEST(LanguageTags, AnUnknownIdentifierIsAmericanEnglish) {
    for (const int id : {0, 33, 0x0400, 0xFFFF}) {
        EXPECT_EQ(tag(static_cast<std::uint16_t>(id)), "en-US");
    }
}

// Nothing reads these columns; what the rows say about each other still has to hold.
TEST(LanguageTags, ScriptsAndCodePagesGoTogether) {
    const std::set<int> pages = {0,    874,  932,  936,  949,  950,  1250, 1251,
                                 1252, 1253, 1254, 1255, 1256, 1257, 1258, 3000};
    for (const Row& row : kRows) {
        EXPECT_TRUE(pages.contains(row.codePage)) << std::hex << row.id;
        EXPECT_EQ(row.codePage == 1251, row.script == "Cyrl") << std::hex << row.id;
        EXPECT_EQ(row.codePage == 1256, row.script == "Arab") << std::hex << row.id;
        if (const auto hyphen = row.country.find('-'); hyphen != std::string::npos) {
            EXPECT_EQ(row.country.substr(0, hyphen), row.script);
        }
    }
}

}  // namespace
