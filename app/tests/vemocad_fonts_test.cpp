// Whole runs of vemocad with fonts and search paths: what serves a drawing's text styles, what FIND
// and FONTS tell, and what a new user's folders hold.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "vemocadrun.h"

namespace vemoapp {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

// Groups of a STYLE record behind its name.
std::string style(const std::string& name, const std::string& font, const std::string& more = "") {
    return "0\nSTYLE\n2\n" + name + "\n70\n0\n3\n" + font + "\n" + more;
}

std::string typeface(const std::string& name, int flags) {
    return "1001\nACAD\n1000\n" + name + "\n1071\n" + std::to_string(flags) + "\n";
}

std::string drawing(const std::string& styles) {
    return "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nSTYLE\n" + styles +
           "0\nENDTAB\n0\nENDSEC\n0\nEOF\n";
}

constexpr int kBold = 0x02000000;

class VemocadFonts : public testing::Test {
  protected:
    // The system's fonts are those that the test copies.
    std::string addSystemFont(const std::string& font) {
        const fs::path source = fs::path("/usr/share/fonts/truetype") / font;
        const std::string name = "share/fonts/" + source.filename().string();
        vemocad.copyFile(source, name);
        return vemocad.path(name);
    }
    std::string open(const std::string& file, const std::string& input = "") {
        RunResult result = vemocad.run({file}, input);
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.output;
    }

    VemocadRun vemocad;
    const std::string bin = VemocadRun::builtApplication().string();
};

TEST_F(VemocadFonts, ADrawingsStylesAreEachServed) {
    const std::string sans = addSystemFont("dejavu/DejaVuSans.ttf");
    const std::string bold = addSystemFont("dejavu/DejaVuSans-Bold.ttf");
    const std::string serif = addSystemFont("liberation/LiberationSerif-Italic.ttf");
    const std::string output = open(bin + "/drawings/floorplan.dxf");
    const std::string txt = bin + "/Fonts/txt.shx";
    for (const std::string& line :
         {"NOTES: romans.shx is missing, " + txt + " serves instead (configured for SHX fonts)",
          "STANDARD: txt.shx is " + txt,
          "HAN: txt.shx is " + txt + "; big font hztxt.shx is " + bin + "/Fonts/hztxt.shx",
          "CAPTION: LIBERATIONSERIF-ITALIC.TTF is " + serif, "ROOMS: DejaVu Sans is " + sans,
          "TITLE: DejaVu Sans bold is " + bold}) {
        EXPECT_THAT(output, HasSubstr(line + "\n"));
    }
}

TEST_F(VemocadFonts, AFontBesideADrawingServesThatDrawingAlone) {
    vemocad.copyFile(bin + "/Fonts/txt.shx", "one/own.shx");
    vemocad.copyFile("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", "one/Own.ttf");
    const std::string styles =
        style("A", "OWN") + style("B", "own.ttf", typeface("DejaVu Sans", 0));
    const std::string one = vemocad.write("one/a.dxf", drawing(styles));
    const std::string other = vemocad.write("other/b.dxf", drawing(styles));
    const std::string output =
        open(one, "FIND own.shx SHX\nOPEN " + other + "\nFIND own.shx SHX\n");
    const std::size_t second = output.find("Opened " + other);
    ASSERT_NE(second, std::string::npos) << output;
    const std::string shx = vemocad.path("one/own.shx");
    EXPECT_THAT(output.substr(0, second),
                AllOf(HasSubstr("A: OWN.shx is " + shx + "\n"),
                      HasSubstr("B: DejaVu Sans is " + vemocad.path("one/Own.ttf")),
                      HasSubstr("\n" + shx + " (the drawing's folder)\n")));
    EXPECT_THAT(output.substr(second),
                AllOf(HasSubstr("A: OWN.shx is missing, " + bin + "/Fonts/txt.shx serves"),
                      HasSubstr("B: DejaVu Sans is missing, and its substitute DejaVuSans.ttf"),
                      HasSubstr("own.shx is not found.")));
}

TEST_F(VemocadFonts, AStalePathIsFoundByItsBareName) {
    const std::string sans = addSystemFont("dejavu/DejaVuSans.ttf");
    const std::string file =
        vemocad.write("a.dxf", drawing(style("A", "C:\\CAD\\FONTS\\TXT.SHX") +
                                       style("B", "/gone/dejavusans.TTF") +
                                       style("C", "x.ttf", typeface("DejaVu Sans", kBold))));
    const std::string output = open(file, "FIND /gone/VEMO.LIN\n");
    EXPECT_THAT(output, HasSubstr("TXT.SHX is " + bin + "/Fonts/txt.shx\n"));
    EXPECT_THAT(output, HasSubstr("dejavusans.TTF is " + sans + "\n"));
    EXPECT_THAT(output, HasSubstr("DejaVu Sans bold is " + sans + "\n"));
    EXPECT_THAT(output, HasSubstr(vemocad.path("config/vemocad/Support/vemo.lin") +
                                  " (entry 1 of supportPaths)"));
}

TEST_F(VemocadFonts, FindTellsByWhichRoad) {
    const std::string sans = addSystemFont("dejavu/DejaVuSans.ttf");
    const std::string note = vemocad.write("Note.txt", "");
    const std::string user = vemocad.path("config/vemocad/");
    const std::string output =
        vemocad
            .run({bin + "/drawings/site.dxf"},
                 "FIND note.TXT\nFIND \"" + note +
                     "\"\nFIND BRACKET.dxf\nFIND vemo.pat pattern\n"
                     "FIND dejavusans.ttf ttf\nFIND txt.shx font\nFIND dejavusans.ttf shx\n"
                     "FIND vemo.fmp fontmap\n")
            .output;
    for (const std::string& answer :
         {note + " (the working folder)", note + " (as named)",
          bin + "/drawings/bracket.dxf (the drawing's folder)",
          user + "Support/vemo.pat (entry 1 of pattenPaths)", sans + " (the font index)",
          bin + "/Fonts/txt.shx (the font index)", std::string("dejavusans.ttf is not found."),
          user + "Support/vemo.fmp (entry 2 of fontmapFile)"}) {
        EXPECT_THAT(output, HasSubstr("\n" + answer + "\n"));
    }
}

TEST_F(VemocadFonts, FontsListsFamiliesStylesAndFiles) {
    for (const char* font : {"dejavu/DejaVuSerif.ttf", "dejavu/DejaVuSerif-Bold.ttf",
                             "liberation/LiberationSans-BoldItalic.ttf", "wqy/wqy-microhei.ttc"}) {
        addSystemFont(font);
    }
    const std::string output =
        open(bin + "/drawings/site.dxf", "fonts\nFONTS SERIF\nFONTS 驿微米黑\nFONTS Hz\n");
    const std::string all = output.substr(output.find("> fonts"));
    EXPECT_THAT(all, HasSubstr("\nTrueType families: 4\n"));
    EXPECT_THAT(all, HasSubstr("\n  Liberation Sans: bold italic\n"));
    EXPECT_THAT(all, HasSubstr("\nSHX fonts: 1\n  txt.shx: " + bin + "/Fonts/txt.shx\n"));
    EXPECT_THAT(output, HasSubstr("> FONTS SERIF\nTrueType families: 1 of 4\n  DejaVu Serif: bold\n"
                                  "SHX fonts: 0 of 1\n"));
    EXPECT_THAT(output, HasSubstr("> FONTS 驿微米黑\nTrueType families: 1 of 4\n"
                                  "  WenQuanYi Micro Hei (文泉驿微米黑)\n"));
    EXPECT_THAT(output,
                HasSubstr("TrueType families: 0 of 4\nSHX fonts: 0 of 1\nBig fonts: 1 of 1\n"
                          "  hztxt.shx: " +
                          bin + "/Fonts/hztxt.shx\n"));
}

TEST_F(VemocadFonts, ALongListOfFontsIsCutUnlessAFilterIsGiven) {
    for (int index = 0; index < 15; ++index) {
        vemocad.copyFile(bin + "/Fonts/txt.shx", "share/fonts/f" + std::to_string(index) + ".shx");
    }
    const std::string output = open(bin + "/drawings/site.dxf", "FONTS\nFONTS f\n");
    EXPECT_THAT(output, HasSubstr("SHX fonts: 16\n"));
    EXPECT_THAT(output, HasSubstr("  and 4 more;"));
    EXPECT_THAT(output.substr(output.find("> FONTS f")),
                AllOf(HasSubstr("SHX fonts: 15 of 16\n"), HasSubstr("  f14.shx: "),
                      Not(HasSubstr("more;"))));
}

TEST_F(VemocadFonts, ACutOffShxFileEndsTheStartByItsName) {
    const char* const settings = R"({"version": 256, "language": "en-US", "mine": [1, 2]})";
    vemocad.write("config/vemocad/user.json", settings);
    const std::string broken = vemocad.write("config/vemocad/Fonts/broken.shx", "Drafting86 unif");
    const RunResult result = vemocad.run({bin + "/drawings/site.dxf"}, "STATUS\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, ContainsRegex("vemocad: [^\n]*" + broken));
    EXPECT_THAT(result.output, Not(HasSubstr("Opened")));
    EXPECT_THAT(vemocad.read("config/vemocad/user.json"),
                AllOf(HasSubstr("\"mine\""), HasSubstr("\"version\": 256")));
    fs::remove(broken);
    EXPECT_THAT(open(bin + "/drawings/site.dxf"), HasSubstr("Opened"));
}

TEST_F(VemocadFonts, ANewUsersFoldersAreFilledOnceInTheUsersLanguage) {
    vemocad.write("config/vemocad/user.json", R"({"version": 256, "language": "zh-CN"})");
    const std::string first = vemocad.run({}).output;
    const fs::path user = vemocad.path("config/vemocad");
    EXPECT_THAT(first, HasSubstr("template " + (user / "Template/vemoiso.dwt").string()));
    for (const char* file :
         {"Template/vemoiso.dwt", "Support/vemo.lin", "Support/vemo.pat", "Plotters/pdf.json",
          "Papers/sizes.json", "PrintStyles/monochrome.json"}) {
        const std::string seeded = vemocad.read(std::string("config/vemocad/") + file);
        EXPECT_FALSE(seeded.empty()) << file;
        EXPECT_EQ(seeded, readFile(fs::path(bin) / "UserDataCache/zh-CN" / file)) << file;
    }
    fs::remove(user / "Support/vemo.pat");
    vemocad.write("config/vemocad/Support/vemo.lin", "my own");
    vemocad.run({});
    EXPECT_FALSE(fs::exists(user / "Support/vemo.pat"));
    EXPECT_EQ(vemocad.read("config/vemocad/Support/vemo.lin"), "my own");
}

}  // namespace
}  // namespace vemoapp
