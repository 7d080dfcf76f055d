// The DXF reader: what it takes out of a drawing, and what it says about a damaged one.
#include <algorithm>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <drawing/runtime.h>

#include "dxfdrawing.h"
#include "dxfgroups.h"

namespace vemoapp {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using testing::UnorderedElementsAre;

DxfDrawing read(const std::string& text) {
    std::istringstream stream(text);
    return readDxfDrawing(stream);
}

std::string errorOf(const std::string& text) {
    try {
        read(text);
    } catch (const OdError& error) {
        EXPECT_EQ(error.code(), eExtendedError);
        return OdStringToUtf8String(error.description()).str();
    }
    return "accepted";
}

// Words become lines: "0 SECTION" needs no line feeds to be readable in a test.
std::string lines(const std::string& words) {
    std::string text = words;
    std::replace(text.begin(), text.end(), ' ', '\n');
    return text + "\n";
}

std::string section(const std::string& name, const std::string& words) {
    return "0 SECTION 2 " + name + (words.empty() ? "" : " " + words) + " 0 ENDSEC ";
}

std::string header(const std::string& version, const std::string& codePage) {
    return section("HEADER", "9 $ACADVER 1 " + version + " 9 $DWGCODEPAGE 3 " + codePage);
}

std::string layerTable(const std::string& layers) {
    return section("TABLES", "0 TABLE 2 LAYER 70 1 " + layers + " 0 ENDTAB");
}

std::string styleTable(const std::string& styles) {
    return section("TABLES", "0 TABLE 2 STYLE 70 1 " + styles + " 0 ENDTAB");
}

std::string sample(const std::string& name) {
    std::ifstream stream(std::string(VEMO_DRAWINGS "/") + name, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

TEST(Dxf, TakesHeaderVariablesAndSkipsWhatItDoesNotKnow) {
    std::string text =
        lines("999 remark " +
              section("HEADER",
                      "9 $ACADVER 1 AC1015 9 $EXTMIN 10 0.0 20 0.0 9 $INSUNITS 70 4 "
                      "9 $MEASUREMENT 70 0 9 $DWGCODEPAGE 3 ANSI_1252") +
              section("CLASSES", "0 CLASS 1 SOMETHING") + section("OBJECTS", "0 DICTIONARY 5 C") +
              section("NEWSECTION", "") + "0 EOF");
    DxfDrawing drawing = read("\xEF\xBB\xBF" + text);
    EXPECT_EQ(drawing.version, "AC1015");
    EXPECT_EQ(drawing.codePage, "ANSI_1252");
    EXPECT_EQ(drawing.units, 4);
    EXPECT_FALSE(drawing.metric);
}

TEST(Dxf, LineEndsAndBlanksAroundCodesMakeNoDifference) {
    std::string text = lines(layerTable("0 LAYER 2 Walls 62 -3 70 4") +
                             section("ENTITIES", "0 LINE 8 Walls") + "0 EOF");
    std::string windows;
    for (char letter : text) {
        windows += letter == '\n' ? "\r\n" : std::string(1, letter);
    }
    std::string padded =
        "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\nWalls\n  0\nENDSEC\n  0\nEOF";
    for (const std::string& form : {text, windows, padded}) {
        DxfDrawing drawing = read(form);
        ASSERT_EQ(drawing.layers.size(), 1U);
        EXPECT_EQ(drawing.layers[0].name, "Walls");
        EXPECT_EQ(drawing.layers[0].entities, 1U);
    }
    EXPECT_EQ(read(windows).layers[0].colour, -3);
    EXPECT_EQ(read(windows).layers[0].flags, 4);
}

TEST(Dxf, LayersOfTheTableComeFirstAndEntitiesAddTheirs) {
    DxfDrawing drawing = read(
        lines(layerTable("0 LAYER 2 0 62 7 0 LAYER 2 WALLS 62 1") +
              section("ENTITIES", "0 LINE 8 Walls 0 LINE 8 walls 8 LATER 0 POINT 0 ARC 8 Ghost") +
              "0 EOF"));
    std::vector<std::pair<std::string, std::uint64_t>> layers;
    for (const DxfLayer& layer : drawing.layers) {
        layers.emplace_back(layer.name, layer.entities);
    }
    EXPECT_THAT(layers, ElementsAre(Pair("0", 1), Pair("WALLS", 2), Pair("Ghost", 1)));
}

TEST(Dxf, CountsEntitiesOnceAndOnlyThoseOfTheDrawing) {
    DxfDrawing drawing =
        read(lines(section("BLOCKS",
                           "0 BLOCK 8 0 2 TREE 0 CIRCLE 8 0 0 ENDBLK 8 0 0 BLOCK 2 *D1 0 ENDBLK "
                           "0 BLOCK 2 $MODEL_SPACE 0 ENDBLK") +
                   section("ENTITIES",
                           "0 POLYLINE 66 1 0 VERTEX 0 VERTEX 0 SEQEND 0 INSERT 2 TREE 66 1 "
                           "0 ATTRIB 0 SEQEND 0 INSERT 2 TREE") +
                   "0 EOF"));
    EXPECT_THAT(drawing.entityCounts, UnorderedElementsAre(Pair("POLYLINE", 1), Pair("INSERT", 2)));
    EXPECT_EQ(drawing.entityTotal(), 3U);
    EXPECT_THAT(drawing.blocks, ElementsAre("TREE"));
}

TEST(Dxf, StatedCountsAreNotBelieved) {
    std::string text =
        lines(section("TABLES", "0 TABLE 2 LAYER 70 2147483647 0 LAYER 2 A 0 ENDTAB") +
              section("ENTITIES", "0 LWPOLYLINE 90 2147483647 70 1 10 0.0 20 0.0") + "0 EOF");
    EXPECT_EQ(read(text).entityTotal(), 1U);
    EXPECT_EQ(read(text).layers.size(), 2U);
}

TEST(Dxf, StylesNameTheirFonts) {
    DxfDrawing drawing =
        read(lines(styleTable("0 STYLE 2 NOTES 70 0 3 romans.shx 4 hztxt.shx "
                              "0 STYLE 2 TITLE 70 0 3 arial.ttf 1001 OTHER 1000 Wrong 1071 1 "
                              "1001 ACAD 1000 Arial 1071 33554466 "
                              "0 STYLE 2  70 1 3 ltypeshp.shx") +
                   "0 EOF"));
    ASSERT_EQ(drawing.styles.size(), 3U);
    EXPECT_EQ(drawing.styles[0].fontFile, "romans.shx");
    EXPECT_EQ(drawing.styles[0].bigFontFile, "hztxt.shx");
    EXPECT_EQ(drawing.styles[0].typeface, "");
    EXPECT_EQ(drawing.styles[1].typeface, "Arial");
    EXPECT_EQ(drawing.styles[1].faceFlags & OdTtfDescriptor::kBold, OdTtfDescriptor::kBold);
    EXPECT_EQ(drawing.styles[1].faceFlags & OdTtfDescriptor::kItalic, 0U);
    EXPECT_TRUE(drawing.styles[2].namesShapeFile);
}

std::string layerNameIn(const std::string& version, const std::string& codePage,
                        const std::string& bytes) {
    return read(lines(header(version, codePage) + layerTable("0 LAYER 2 " + bytes) + "0 EOF"))
        .layers[0]
        .name;
}

TEST(Dxf, NamesAreReadInTheDrawingsCodePage) {
    EXPECT_EQ(layerNameIn("AC1015", "ANSI_936", "\xB5\xC0\xC2\xB7"), "道路");
    EXPECT_EQ(layerNameIn("AC1015", "GB2312", "\xB5\xC0\xC2\xB7"), "道路");
    EXPECT_EQ(layerNameIn("AC1015", "ANSI_1252", "T\xFCr"), "Tür");
    EXPECT_EQ(layerNameIn("AC1021", "ANSI_936", "道路"), "道路");
    EXPECT_EQ(layerNameIn("AC1015", "ANSI_936", "\\U+9053\\U+8DEF-\\U+12"), "道路-\\U+12");
    EXPECT_EQ(layerNameIn("AC1015", "ANSI_936",
                          "A\xFF"
                          "B"),
              "A\uFFFDB");
    EXPECT_EQ(layerNameIn("AC1015", "NO_SUCH_PAGE",
                          "A\xFF"
                          "B"),
              "A\uFFFDB");
    EXPECT_EQ(read(sample("site.dxf")).layers[2].name, "道路");
}

TEST(Dxf, WordsOfTheFormatAreMadeReadableToo) {
    const DxfDrawing drawing = read(
        lines(header("AC\xFF", "ANSI_\xE4\xB8") + section("ENTITIES", "0 LI\xFFNE") + "0 EOF"));
    EXPECT_EQ(drawing.version, "AC\uFFFD");
    EXPECT_EQ(drawing.codePage, "ANSI_\uFFFD");
    EXPECT_THAT(drawing.entityCounts, ElementsAre(Pair("LI\uFFFDNE", 1)));
}

TEST(Dxf, WhatIsNoDrawingIsRefusedWithItsLine) {
    EXPECT_EQ(errorOf(""), "line 0: the file ends before its EOF mark");
    EXPECT_THAT(errorOf("{\n\"Core\": {}\n}\n"), HasSubstr("line 1: a group code is expected"));
    EXPECT_THAT(errorOf(std::string("AC1015\0\0\0\n", 10)), HasSubstr("line 1: binary data"));
    EXPECT_THAT(errorOf("0\nLINE\n0\nEOF\n"), HasSubstr("line 2: a section"));
    EXPECT_THAT(errorOf(std::string(DxfGroupReader::kMaxLine + 1, ' ')),
                HasSubstr("line 1: longer than"));
}

TEST(Dxf, DamageIsReportedWithItsLine) {
    struct Case {
        std::string text;
        const char* expected;
    };
    const Case cases[] = {
        {lines("0 SECTION 2 ENTITIES 0 LINE 8"), "line 7: the file ends in the middle of a group"},
        {lines("0 SECTION 2 ENTITIES 0 LINE 8 0"), "line 8: the file ends before"},
        {lines("0 SECTION 2 ENTITIES 0 LINE 0 ENDSEC"), "line 8: the file ends before"},
        {lines("0 SECTION 2 ENTITIES 0 LINE x 1"), "line 7: a group code is expected, not \"x\""},
        {lines("0 SECTION 2 ENTITIES 0 LINE 1072 1"), "line 7: a group code is expected"},
        {lines("0 SECTION 2 ENTITIES 0 LINE 0 EOF"), "line 8: the section before has no ENDSEC"},
        {lines("0 SECTION 2 HEADER 0 SECTION"), "line 6: the section before has no ENDSEC"},
        {lines("0 SECTION 0 ENDSEC"), "line 4: the section's name is expected"},
        {lines(layerTable("0 LAYER 62 1") + "0 EOF"), "line 12: LAYER has no name"},
        {lines(layerTable("0 LAYER 2 A 62 red") + "0 EOF"), "line 16: an integer is expected"},
        {lines(section("BLOCKS", "0 BLOCK 2 A 0 BLOCK 2 B") + "0 EOF"),
         "line 10: a block inside a block"},
    };
    for (const Case& damage : cases) {
        EXPECT_THAT(errorOf(damage.text), HasSubstr(damage.expected)) << damage.text;
    }
}

TEST(Dxf, NoBeginningOfADrawingIsTakenForAWholeOne) {
    const std::string whole = sample("floorplan.dxf");
    ASSERT_GT(whole.size(), 5000U);
    // The last line feed may be missing, the mark may not.
    EXPECT_NE(errorOf(whole.substr(0, whole.size() - 2)), "accepted");
    for (std::size_t length = 0; length + 2 < whole.size(); length += 7) {
        ASSERT_NE(errorOf(whole.substr(0, length)), "accepted") << length;
    }
}

TEST(Dxf, SampleDrawingsHoldWhatTheyAreMadeFor) {
    DxfDrawing floorplan = read(sample("floorplan.dxf"));
    EXPECT_EQ(floorplan.units, 4);
    EXPECT_EQ(floorplan.layers.size(), 7U);
    EXPECT_EQ(floorplan.styles.back().typeface, "DejaVu Sans");
    EXPECT_NE(floorplan.styles.back().faceFlags & OdTtfDescriptor::kBold, 0U);
    DxfDrawing bracket = read(sample("bracket.dxf"));
    EXPECT_EQ(bracket.entityCounts["CIRCLE"], 4U);
    EXPECT_EQ(bracket.units, 1);
    DxfDrawing site = read(sample("site.dxf"));
    EXPECT_EQ(site.entityCounts["INSERT"], 12U);
    EXPECT_FALSE(site.units.has_value());
}

TEST(Dxf, ReportIsShortWhateverTheDrawingHolds) {
    DxfDrawing drawing;
    drawing.version = "AC1015";
    drawing.units = 99;
    for (int index = 0; index < 40; ++index) {
        drawing.layers.push_back({.name = "L" + std::to_string(index)});
    }
    drawing.entityCounts = {{"ARC", 2}, {"LINE", 30}};
    DxfTextStyle& style = drawing.styles.emplace_back();
    style.name = "T";
    style.typeface = "Arial";
    style.faceFlags = OdTtfDescriptor::kBold;
    std::vector<std::string> report = describeDrawing(drawing);
    ASSERT_EQ(report.size(), 4U);
    EXPECT_THAT(report[0], HasSubstr("AC1015, units code 99"));
    EXPECT_THAT(report[1], HasSubstr("L11 (0) and 28 more"));
    EXPECT_THAT(report[2], HasSubstr("32: LINE 30, ARC 2"));
    EXPECT_THAT(report[3], HasSubstr("T: Arial bold (TrueType)"));
}

}  // namespace
}  // namespace vemoapp
