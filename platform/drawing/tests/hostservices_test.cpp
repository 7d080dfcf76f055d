// Host services as the runtime itself answers them.
#include <cstdlib>
#include <memory>

#include "testsupport.h"

namespace {

class WarningHost : public ExHostAppServices {
  public:
    using ExHostAppServices::warning;
    void warning(const char* group, const OdString& message) override {
        text = OdString(group ? group : "none") + L": " + message;
    }
    OdString text;
};

class Modeler : public OdModelerGeometryBuilder {
  public:
    OdResult initializeBuilder(OdRxObject* builder, std::uint32_t entityType) override {
        return builder == nullptr && entityType == 7 ? eEndOfFile : eOk;
    }
};

OdRxObjectPtr makeModeler() {
    return OdRxObjectImpl<Modeler>::createObject();
}
OdRxObjectPtr makeOther() {
    return newOdMemoryStream();
}

class Host : public RuntimeTest {
  protected:
    OdStaticRxObject<WarningHost> host;
    TempFolder folder;
};

OdStringArray fontFoldersOf(const ExHostAppServices& host) {
    OdStringArray folders;
    const bool any = host.getSystemFontFolders(folders);
    EXPECT_EQ(any, !folders.isEmpty());
    return folders;
}

}  // namespace

TEST_F(Host, FindsFilesAsTheyAreNamed) {
    const OdString file = folder.write("a.shx", "");
    EXPECT_EQ(host.findFile(file, nullptr, OdDbBaseHostAppServices::kDefault), file);
    EXPECT_EQ(host.findFile(folder.path("b"), nullptr, OdDbBaseHostAppServices::kDefault), L"");
    EXPECT_EQ(host.readFile(file)->length(), 0u);
}

TEST_F(Host, EveryWarningEndsInItsText) {
    host.warning(L"text");
    EXPECT_EQ(host.text, L"none: text");
    host.warning(eInvalidInput, OdDbObjectId());
    EXPECT_EQ(host.text, L"none: Result code: 5");
    host.warning("group", OdError(L"own"));
    EXPECT_EQ(host.text, L"group: own");
    host.warning(OdError(eInvalidInput, L"own"));
    EXPECT_EQ(host.text, L"none: Invalid input: own");
}

TEST_F(Host, CollectsFilesByName) {
    for (const char* name : {"b.shx", "a.shx", "c.SHX", "d.shp"}) {
        folder.write(name, "");
    }
    std::filesystem::create_directory(folder.path() / "folder.shx");
    OdStringArray found;
    found.append(L"before");
    host.OdDbBaseHostAppServices::collectFilePathsInDirectory(found, folder.path(""), L"*.shx");
    host.OdDbBaseHostAppServices::collectFilePathsInDirectory(found, L"/nowhere", L"*");
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found.at(1), folder.path("a.shx"));
    EXPECT_EQ(found.at(2), folder.path("b.shx"));
}

TEST_F(Host, NamesTheSystemsFontFoldersOnce) {
    const std::filesystem::path root = folder.path();
    for (const char* name : {"home/.fonts", "data/fonts/fonts", "more/fonts"}) {
        std::filesystem::create_directories(root / name);
    }
    std::filesystem::create_directory_symlink(root / "more", root / "alias");
    const std::string data = (root / "data").string();
    setenv("HOME", (root / "home").c_str(), 1);
    unsetenv("XDG_DATA_HOME");
    setenv("XDG_DATA_DIRS",
           (data + "/fonts:" + data + ":relative:" + (root / "more").string() +
            "/:" + (root / "alias").string() + ":/nowhere")
               .c_str(),
           1);
    const OdStringArray folders = fontFoldersOf(host);
    ASSERT_EQ(folders.size(), 3u);
    EXPECT_EQ(folders.at(0), folder.path("home/.fonts"));
    EXPECT_EQ(folders.at(1), folder.path("data/fonts")) << "and not data/fonts/fonts in it";
    EXPECT_EQ(folders.at(2), folder.path("more/fonts"));
    setenv("HOME", "", 1);
    setenv("XDG_DATA_DIRS", "/nowhere", 1);
    EXPECT_TRUE(fontFoldersOf(host).isEmpty());
}

TEST_F(Host, AnswersFromTheEnvironment) {
    OdString value(L"kept");
    unsetenv("DRAWING_TEST");
    EXPECT_FALSE(host.getEnv(L"DRAWING_TEST", value));
    EXPECT_EQ(value, L"kept");
    EXPECT_TRUE(host.setEnv(L"DRAWING_TEST", L"图"));
    EXPECT_TRUE(host.getEnv(L"DRAWING_TEST", value));
    EXPECT_EQ(value, L"图");
    EXPECT_FALSE(host.setEnv(L"", L"x"));
    setenv("TMPDIR", "/var/tmp", 1);
    EXPECT_EQ(host.getTempPath(), L"/var/tmp");
    setenv("TMPDIR", "", 1);
    EXPECT_EQ(host.getTempPath(), L"/tmp");
}

TEST_F(Host, MakesUndoObjectsAnew) {
    const OdDbUndoControllerPtr first = host.newUndoController();
    EXPECT_FALSE(first == host.newUndoController());
    EXPECT_EQ(first->numRefs(), 1);
    EXPECT_EQ(first->isA(), OdDbUndoController::desc());
    host.newUndoStream()->putByte(1);
}

TEST_F(Host, HandsBuildersToTheModeler) {
    EXPECT_EQ(host.initializeModelerBuilder(nullptr, 7), eNoInterface);
    const OdRxDictionaryPtr dictionary = odrxServiceDictionary();
    auto answerOf = [&](OdPseudoConstructor constructor) {
        OdRxClass* creator =
            newOdRxClass(L"TestModeler", OdModelerGeometryBuilder::desc(), constructor);
        dictionary->putAt(L"OdModelerGeometryCreator", creator);
        deleteOdRxClass(creator);
        OdResult answer = eOk;
        const OdResult raised =
            raisedBy([&] { answer = host.initializeModelerBuilder(nullptr, 7); });
        return raised == eOk ? answer : raised;
    };
    EXPECT_EQ(answerOf(makeModeler), eEndOfFile);
    EXPECT_EQ(answerOf(nullptr), eNoInterface);
    EXPECT_EQ(answerOf(makeOther), eNotThatKindOfClass);
    dictionary->putAt(L"OdModelerGeometryCreator", newOdMemoryStream().get());
    EXPECT_EQ(raisedBy([&] { host.initializeModelerBuilder(nullptr, 7); }), eNotThatKindOfClass);
}
