// The node "Fonts" of the Runtime tree: the font service as readers of the tree see it.
#include <functional>

#include "boot_finder.h"

using testing::ElementsAre;

namespace {

class FontNodeTest : public FinderTest {};

TEST_F(FontNodeTest, IsThereFromTheLoadedConfigurationToTheExit) {
    const auto noteFonts = [] { note(vo_runtime_config("Fonts") ? "fonts" : "no fonts"); };
    program.onInitialize = [&] {
        noteFonts();
        const auto reactor = JournalReactor::create("reactor");
        reactor->then = noteFonts;
        dispatcher()->addReactor(reactor.get());
    };
    program.onUninitialize = noteFonts;
    ASSERT_EQ(boot(), 0);
    shutDown();
    EXPECT_THAT(
        journalOf({"fonts", "no fonts", "reactor hears", "shutDown", "uninitialize"}),
        ElementsAre("no fonts", "reactor hears sysConfigLoaded", "fonts",
                    "reactor hears userConfigLoaded", "fonts", "reactor hears mainWindowReady",
                    "fonts", "reactor hears appStarted", "fonts",
                    "reactor hears appExiting [quitting]", "no fonts [quitting]",
                    "shutDown [quitting]", "uninitialize [quitting]", "no fonts [quitting]"));
}

TEST_F(FontNodeTest, ShowsItsFivePropertiesAsTheyAreAtTheMoment) {
    bootBare();
    const VoJsonPtr node = vo_runtime_config("Fonts");
    EXPECT_EQ(json(node), R"({"shx":[],"bigfont":[],"ttf":[],"Alternate":"","Substitute":""})");
    EXPECT_EQ(node->valueType(), 0x2002);
    EXPECT_EQ(node->propertyCount(), 5);
    OdAnsiString key = "kept";
    EXPECT_TRUE(node->propertyAt(-1, key).isNull());
    EXPECT_TRUE(node->propertyAt(5, key).isNull());
    EXPECT_EQ(key, "kept");
    EXPECT_EQ(json(node->propertyAt(4, key)), R"("")");
    EXPECT_EQ(key, "Substitute");
    EXPECT_TRUE(node->hasProperty("Alternate"));
    EXPECT_TRUE(vo_runtime_config("Fonts/TTF").isNull());

    const std::string path = unifont("share/fonts/字 a.shx");
    bigfont("share/fonts/b.shp");
    trueType("share/fonts/c.ttf", "Sans");
    const VoJsonPtr before = node->getProperty("shx");
    scanSystemFolders();
    EXPECT_EQ(json(before), "[]");
    EXPECT_EQ(json(vo_runtime_config("Fonts/shx")),
              R"([{"name":"字 a.shx","path":")" + path + R"(","canExt":true}])");
    EXPECT_EQ(json(vo_runtime_config("Fonts/bigfont/0/name")), R"("b.shp")");
    EXPECT_EQ(json(vo_runtime_config("Fonts/ttf/0/facename/default")), R"("Sans")");
    // What was read is the reader's own.
    vo_runtime_config("Fonts/shx")->clear();
    node->getProperty("ttf")->removeItem(0);
    scanSystemFolders();
    EXPECT_EQ(indexed("shx").size(), 2u);
    EXPECT_EQ(typefaces().size(), 1u);
}

TEST_F(FontNodeTest, TypefacesAreGroupedWithTheirStylesAndNames) {
    bootBare();
    trueType("share/fonts/1.ttf", "Bold", "Bold");
    trueType("share/fonts/2.ttf", "Italic", "Italic");
    trueType("share/fonts/3.ttf", "Both", "Bold Italic");
    for (const std::string style : {"Regular", "Bold", "Italic", "Bold Italic"}) {
        trueType("share/fonts/4" + style + ".ttf", "All", style);
    }
    trueType("share/fonts/5.ttf", "Bold");
    // An 8-bit name under 0 beside the names of Windows' languages.
    const auto chinese = fontfile::family(u"\u5b8b\u4f53", fontfile::kChinese);
    folder.file(
        "share/fonts/6.ttf",
        fontfile::sfnt({{fontfile::family8("Neutral"), chinese, fontfile::family("Song")}}));
    folder.file("share/fonts/7.ttf",
                fontfile::sfnt({{fontfile::family8("Neutral"), fontfile::family("Roman")}}));
    // Further faces of a typeface don't name it anew.
    folder.file("share/fonts/8.ttf", fontfile::sfnt({{fontfile::family("All"), chinese}}));
    scanSystemFolders();
    const std::string expected = R"([{"facename":{"default":"Bold","zh-CN":"Bold"},"flag":1},)"
                                 R"({"facename":{"default":"Italic","zh-CN":"Italic"},"flag":2},)"
                                 R"({"facename":{"default":"Both","zh-CN":"Both"},"flag":4},)"
                                 R"({"facename":{"default":"All","zh-CN":"All"},"flag":7},)"
                                 R"({"facename":{"default":"Song","zh-CN":"宋体"},"flag":0},)"
                                 R"({"facename":{"default":"Roman","zh-CN":"Neutral"},"flag":0}])";
    EXPECT_EQ(json(vo_runtime_config("Fonts/ttf")), expected);
    scanSystemFolders();
    EXPECT_EQ(json(vo_runtime_config("Fonts/ttf")), expected);
}

TEST_F(FontNodeTest, ActiveDocumentsListsComeFirst) {
    bootBare();
    openDrawing();
    unifont("share/fonts/a.shx");
    bigfont("share/fonts/b.shx");
    trueType("share/fonts/c.ttf", "Own", "Bold");
    trueType("share/fonts/d.ttf", "Sans", "Italic");
    scanSystemFolders();
    document->carry(L"FontMainShx", {L"/doc/main.shx", L"/doc/more.shx"});
    document->carry(L"FontBigShx", {L"/doc/big.shx"});
    document->carryFaces({faceOf(L"Sans", true, false)});
    EXPECT_THAT(indexed("shx"), ElementsAre("share/fonts/a.shx"));
    documents->active = document;
    EXPECT_THAT(indexed("shx"), ElementsAre("/doc/main.shx", "/doc/more.shx", "share/fonts/a.shx"));
    EXPECT_THAT(indexed("bigfont"), ElementsAre("/doc/big.shx", "share/fonts/b.shx"));
    EXPECT_EQ(json(vo_runtime_config("Fonts/ttf")),
              R"([{"facename":{"default":"Sans","zh-CN":"Sans"},"flag":3},)"
              R"({"facename":{"default":"Own","zh-CN":"Own"},"flag":1}])");
    // Reading leaves the document's lists as they are.
    const vosi::VosiMapShxFontPtr list = document->data->entries->getAt(L"FontMainShx");
    EXPECT_EQ(list->size(), 2u);
}

TEST_F(FontNodeTest, RefusesEveryWrite) {
    bootBare();
    unifont("share/fonts/a.shx");
    scanSystemFolders();
    const VoJsonPtr node = vo_runtime_config("Fonts");
    const std::string before = json(node);
    const VoJsonPtr value = textArray({"x"});
    const std::vector<VoJsonPtr> answers{
        node->set_propertys("shx", OdAnsiString("x"), false),
        node->set_propertys("shx", "x", false),
        node->set_propertysW("shx", L"x", false),
        node->set_propertyJ("shx", value),
        node->set_propertyI("shx", 1, false),
        node->set_propertyL("shx", 1, false),
        node->set_propertyUL("shx", 1, false),
        node->set_propertyF("shx", 1, false),
        node->set_propertyT("shx", 1, false),
        node->set_propertyB("shx", true, false),
        node->set_propertyP("new", this, false),
        node->set_valueL(1),
        node->set_valueUL(1),
        node->set_valueF(1),
        node->set_valueB(true),
        node->set_values("x"),
        node->set_valuesW(L"x"),
        node->set_valueJ(value(0)),
        node->set_valueI(1),
        node->set_valueT(1),
        node->set_valueP(this),
        node->makePath("a/b"),
    };
    EXPECT_THAT(answers, testing::Each(VoJsonPtr()));
    EXPECT_EQ(node->removeProperty("shx"), node.get());
    EXPECT_EQ(node->append(value), 0);
    EXPECT_EQ(node->insertItem(0, value), 0);
    EXPECT_EQ(node->removeItem(0), -1);
    EXPECT_EQ(node->setItem(0, value), -1);
    EXPECT_EQ(node->mergeProperty("shx", value), 0);
    EXPECT_EQ(node->propertyIndex("shx"), 0);
    node->SetDataI("shx", 1);
    node->SetDataJ("new", value);
    node->copySubProperty(vo_sys_config("User"), true);
    node->clear();
    EXPECT_EQ(json(node), before);
}

TEST_F(FontNodeTest, TreeAndObjectModelCountApart) {
    bootBare();
    const vosi::VosiFindFontSvrPtr service = fonts();
    const long count = service->numRefs();
    const std::vector<VoJsonPtr> held(10, vo_runtime_config("Fonts"));
    EXPECT_EQ(service->numRefs(), count);
    for (int times = 0; times < 30; ++times) {
        held.front()->release();
    }
    vo_runtime_config("")->removeProperty("Fonts");
    EXPECT_TRUE(vo_runtime_config("Fonts").isNull());
    EXPECT_EQ(service->numRefs(), count);
    unifont("share/fonts/a.shx");
    scanSystemFolders();
    EXPECT_EQ(local(service->findFile("a.shx", nullptr, 2)), "share/fonts/a.shx");
    EXPECT_EQ(held.back()->getProperty("shx").ArrayCount(), 1);
}

}  // namespace
