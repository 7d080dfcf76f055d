// vemo-inspect: its use, fonts and texts.
#include "inspectsupport.h"
#include "support/sfntbuilder.h"

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kRealFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";

TEST(Schemas, RefuseWhatDoesNotFit) {
    const std::string step = R"({"name":"a","ms":1,"raised":false,"did":[],"steps":[)";
    const std::string begin =
        R"({"result":0,"error":null,"sysConfigPath":"","userConfigPath":"","tree":{},)"
        R"("userTree":null,"origin":{},"services":[],"modules":[],"log":[],"userFile":"","steps":[)";
    EXPECT_EQ(misfit("boot", begin + step + step + "]}]}]}"), "");
    EXPECT_NE(misfit("boot", begin + step + step + "7]}]}]}"), "");
    EXPECT_NE(misfit("boot", begin + step + R"({"name":"b"}]}]})"), "");
    EXPECT_NE(misfit("boot", begin + R"(],"more":1})"), "");
    EXPECT_NE(misfit("fonts", R"([{"path":"a","ok":true}])"), "");
    EXPECT_NE(misfit("fonts", R"([{"path":"a","shxKind":1,"error":"b"}])"), "");
    EXPECT_NE(misfit("message", R"({"0x39":"text"})"), "");
    EXPECT_NE(misfit("find", R"({"found":null,"tried":[{"place":"a","found":null}]})"), "");
    EXPECT_NE(misfit("find", R"({"found":null,"tried":[]} more)"), "");
}

TEST_F(InspectTest, WrongUseSaysWhyAndWritesNoAnswer) {
    const std::vector<std::vector<std::string>> lines = {
        {},
        {"draw"},
        {"fonts"},
        {"fonts", "--deep", "a.ttf"},
        {"message"},
        {"message", "57x"},
        {"message", "9-3"},
        {"message", "0-100000"},
        {"message", "0x"},
        {"message", "4294967296"},
        {"language", "65536"},
        {"boot"},
        {"boot", "--"},
        {"boot", builtProgram()},
        {"boot", "--appdata", "--", builtProgram()},
        {"boot", "--appdata", "--json", "--", builtProgram()},
        {"boot", "--appdata", "", "--", builtProgram()},
        {"boot", "--temp", "a", "--temp", "b", "--", builtProgram()},
        {"report", "--sysfonts", "--modules", "--", builtProgram()},
        {"find", "txt.shx"},
        {"find", "--", builtProgram()},
        {"find", "txt.shx", "--bold", "--", builtProgram()},
        {"find", "txt.shx", "--typeface", "Arial", "--", builtProgram()},
        {"find", "txt.shx", "--hint", "font", "--", builtProgram()},
        {"find", "--typeface", "--bold", "--", builtProgram()},
    };
    fs::create_directories(scratch.path("--json"));
    for (const std::vector<std::string>& line : lines) {
        const vemoapp::RunResult result = run(line);
        EXPECT_EQ(result.status, 2) << testing::PrintToString(line);
        EXPECT_THAT(result.output, IsEmpty()) << testing::PrintToString(line);
        EXPECT_THAT(result.errors, AllOf(StartsWith("vemo-inspect: "), HasSubstr("\nusage:\n")));
    }
}

TEST_F(InspectTest, HelpNamesEverySubcommand) {
    const vemoapp::RunResult result = run({"--help"});
    EXPECT_EQ(result.status, 0);
    for (const char* name : {"fonts", "message", "language", "boot", "find"}) {
        EXPECT_THAT(result.output, HasSubstr(std::string("vemo-inspect ") + name));
    }
}

// ---- fonts ----

TEST_F(InspectTest, FacesOfARealFont) {
    const auto font = answer({"fonts", kRealFont}, "fonts");
    EXPECT_EQ(at(font, "/0/path"), '"' + std::string(kRealFont) + '"');
    EXPECT_EQ(at(font, "/0/ok"), "true");
    EXPECT_EQ(at(font, "/0/faces/0/typeface"), R"("DejaVu Sans")");
    EXPECT_EQ(at(font, "/0/faces/0/bold"), "true");
    EXPECT_EQ(at(font, "/0/faces/0/italic"), "false");
    EXPECT_EQ(at(font, "/0/faces/0/names/1033"), R"("DejaVu Sans")");
    EXPECT_EQ(at(font, "/0/faces/1"), "nothing");
}

TEST_F(InspectTest, FontsBelowAFolderByTheirPaths) {
    const std::string arrow = fontfile::sfnt(
        {.names = {fontfile::family("Arrow"), fontfile::family(u"Fl\u00E8che", fontfile::kFrench),
                   fontfile::subfamily("Italic")}});
    fs::create_directories(scratch.path("fonts/deeper"));
    scratch.write("fonts/d.TTF", arrow);
    scratch.write("fonts/broken.ttf", arrow.substr(0, 20));
    scratch.write("fonts/cut.shx", "Drafting86 uni");
    scratch.write("fonts/deeper/big.shx", fontfile::shx("Drafting86 bigfont 1.0"));
    scratch.write("fonts/main.shx", fontfile::shx("Drafting86 unifont 1.0"));
    scratch.write("fonts/readme.txt", "no font");

    const auto fonts = answer({"fonts", "fonts"}, "fonts");
    EXPECT_EQ(at(fonts, "/0"), R"({"path":"fonts/broken.ttf","ok":false,"faces":[]})");
    EXPECT_EQ(textAt(fonts, "/1/path"), "fonts/cut.shx");
    EXPECT_THAT(textAt(fonts, "/1/error"), HasSubstr("fonts/cut.shx"));
    EXPECT_EQ(at(fonts, "/2"), R"({"path":"fonts/d.TTF","ok":true,"faces":[{"typeface":"Arrow",)"
                               R"("bold":false,"italic":true,)"
                               R"("names":{"1033":"Arrow","1036":"Flèche"}}]})");
    EXPECT_EQ(at(fonts, "/3"), R"({"path":"fonts/deeper/big.shx","shxKind":1})");
    EXPECT_EQ(at(fonts, "/4"), R"({"path":"fonts/main.shx","shxKind":2})");
    EXPECT_EQ(at(fonts, "/5"), "nothing");

    const std::string text = run({"fonts", "fonts"}).output;
    EXPECT_THAT(text, HasSubstr("fonts/broken.ttf: no face with a family name"));
    EXPECT_THAT(text, HasSubstr("Arrow, italic\n        1033 Arrow\n        1036 Flèche\n"));
    EXPECT_THAT(text, HasSubstr("fonts/deeper/big.shx: a big font\n"));
}

TEST_F(InspectTest, AMissingFontIsNamedBesideWhatIsThere) {
    const vemoapp::RunResult result = run({"fonts", "--json", "nowhere.ttf", kRealFont});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "vemo-inspect: nowhere.ttf isn't there.\n");
    EXPECT_EQ(misfit("fonts", result.output), "");
    EXPECT_THAT(result.output, HasSubstr(R"("typeface":"DejaVu Sans")"));
}

// ---- texts ----

TEST_F(InspectTest, TextsOfCodesAndRanges) {
    const auto texts =
        answer({"message", "57", "0x1EB-493", "57", "4294967294-0xFFFFFFFF"}, "message");
    EXPECT_EQ(texts.MemberCount(), 6U);
    EXPECT_EQ(textAt(texts, "/57"), "eFileNotFound (code : 57)");
    EXPECT_NE(textAt(texts, "/491"), textAt(texts, "/492"));
    EXPECT_THAT(textAt(texts, "/493"), HasSubstr("数据"));
    EXPECT_THAT(textAt(texts, "/4294967295"), HasSubstr("Unknown message"));
    EXPECT_THAT(run({"message", "56-57"}).output,
                HasSubstr("(code : 56)\n57\teFileNotFound (code : 57)\n"));
}

TEST_F(InspectTest, TagsOfLanguages) {
    const auto tags = answer({"language", "1033", "0x804", "65535"}, "message");
    EXPECT_EQ(textAt(tags, "/1033"), "en-US");
    EXPECT_EQ(textAt(tags, "/2052"), "zh-CN");
    EXPECT_EQ(run({"language", "0x409"}).output, "1033\ten-US\n");
}

TEST_F(InspectTest, ModulesByTheirFiles) {
    std::string cut = vemoapp::readFile(testModules() + "/libstage.so");
    cut.resize(3000);
    const std::string damaged = scratch.write("libdamaged.so", cut);
    const auto modules = answer(
        {"module", testModules() + "/libstage.so", damaged, scratch.path("nowhere.so")}, "module");
    EXPECT_EQ(at(modules, "/0/ok"), "true");
    EXPECT_EQ(at(modules, "/0/hasEntry"), "true");
    EXPECT_EQ(at(modules, "/1/ok"), "false");
    EXPECT_THAT(textAt(modules, "/1/reasons/0"), HasSubstr("cut short"));
    EXPECT_EQ(at(modules, "/2/architecture"), "null");
}

TEST_F(InspectTest, AReportOfABuiltApplication) {
    const auto page = run({"report", "--", builtProgram()});
    EXPECT_EQ(page.status, 0);
    EXPECT_THAT(page.output, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page.output, AllOf(HasSubstr("libdocmgr.so"), HasSubstr("Core/FindFonts"),
                                   HasSubstr("<svg"), HasSubstr("</html>")));
}

TEST_F(InspectTest, TheReportTellsWhatServedAFace) {
    fs::create_directory(scratch.path("fonts"));
    scratch.copyFile(kRealFont, "fonts/own.ttf");
    const std::string drawing = scratch.write(
        "a.dxf",
        "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nSTYLE\n0\nSTYLE\n2\nA\n70\n0\n3\nC:\\own.ttf\n"
        "1001\nACAD\n1000\nNobody\n1071\n0\n0\nENDTAB\n0\nENDSEC\n0\nEOF\n");
    const std::string page =
        run({"report", "--sysfonts", "fonts", "--", builtProgram(), drawing}).output;
    const std::size_t face = page.find(">Nobody</td>");
    ASSERT_NE(face, std::string::npos);
    EXPECT_THAT(page.substr(face, page.find("</tr>", face) - face),
                HasSubstr(">" + scratch.path("fonts/own.ttf") +
                          ", found by the file&#39;s name own.ttf</td>"));
    EXPECT_EQ(page.find(">own.ttf</td>"), std::string::npos);
    EXPECT_EQ(page.find(">C:\\own.ttf</td>"), std::string::npos);
}

}  // namespace
