// What an observer of a run hears of the searches for files.
#include <utils/paths.h>

#include "boot_finder.h"
#include "runobserver.h"

using testing::ElementsAre;

namespace {

class SearchListener : public run::Observer {
  public:
    SearchListener() { run::addObserver(*this); }
    ~SearchListener() override { run::removeObserver(*this); }
    SearchListener(const SearchListener&) = delete;
    SearchListener& operator=(const SearchListener&) = delete;

    void searched(run::SearchKind kind, const OdString& wanted, int detail,
                  const OdString& answer) override {
        lines.push_back(std::to_string(static_cast<int>(kind)) + " " + utf8(wanted) + " " +
                        std::to_string(detail) + ": " + utf8(voutGetLastFileNameInPathW(answer)));
    }

    std::vector<std::string> lines;
};

using SearchedTest = FinderTest;

TEST_F(SearchedTest, EachSearchIsToldOnceWithItsAnswer) {
    bootBare();
    trueType("share/fonts/1.ttf", "Sans");
    scanSystemFolders();
    const SearchListener listener;
    OdDbBaseHostAppServices& host = *vodbSystemServices();
    OdString file;
    // The look-up of the file that the face's index names is part of the one search.
    EXPECT_TRUE(host.ttfFileNameByDescriptor(faceOf(L"Sans", false, false), file));
    EXPECT_FALSE(host.ttfFileNameByDescriptor(faceOf(L"Other", false, false), file));
    host.findFile(L"1.ttf", nullptr, OdDbBaseHostAppServices::kTrueTypeFontFile);
    host.findFile(L"none.shx", nullptr, OdDbBaseHostAppServices::kCompiledShapeFile);
    vo_sys_config("")
        ->makePath("User/SubstituteFont")
        ->set_propertys("FontTypeShx", "txt.shx", false);
    host.getSubstituteFont(L"none.shx", kFontTypeShx);
    EXPECT_THAT(listener.lines, ElementsAre("1 Sans 0: 1.ttf", "1 Other 0: ", "0 1.ttf 3: 1.ttf",
                                            "0 none.shx 2: ", "2 none.shx 1: txt.shx"));
}

}  // namespace
