// What the main program reads for itself: the desktop's folders and two of the options.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "configfiles.h"
#include "xdgpaths.h"

namespace vemoapp {
namespace {

class DesktopFolders : public testing::Test {
  protected:
    DesktopFolders() {
        std::string name =
            (std::filesystem::temp_directory_path() / "vemo-desktop-XXXXXX").string();
        home = mkdtemp(name.data());
        setenv("HOME", home.c_str(), 1);
        unsetenv("XDG_CONFIG_HOME");
    }
    ~DesktopFolders() override { std::filesystem::remove_all(home); }

    void writeUserDirs(const std::string& text) {
        std::filesystem::create_directories(home + "/.config");
        std::ofstream(home + "/.config/user-dirs.dirs") << text;
    }

    std::string home;
};

TEST_F(DesktopFolders, FollowTheEnvironmentWhereItIsAbsolute) {
    EXPECT_EQ(configHome(), home + "/.config");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(configHome(), home + "/.config");
    setenv("XDG_CONFIG_HOME", "/elsewhere", 1);
    EXPECT_EQ(configHome(), "/elsewhere");
    setenv("TMPDIR", "/var/tmp", 1);
    EXPECT_EQ(tempFolder(), "/var/tmp");
    unsetenv("HOME");
    EXPECT_TRUE(homeFolder().starts_with('/'));
    EXPECT_NE(homeFolder(), home);
}

TEST_F(DesktopFolders, DocumentsAreWhereTheDesktopSaysElseUnderHome) {
    EXPECT_EQ(documentFolder(), home);
    std::filesystem::create_directory(home + "/Documents");
    EXPECT_EQ(documentFolder(), home + "/Documents");
    std::filesystem::create_directory(home + "/My \"Papers\"");
    writeUserDirs(
        "# comment\nXDG_MUSIC_DIR=\"$HOME/Music\"\n"
        "XDG_DOCUMENTS_DIR=\"$HOME/My \\\"Papers\\\"\"\n");
    EXPECT_EQ(documentFolder(), home + "/My \"Papers\"");
    for (const char* useless : {"XDG_DOCUMENTS_DIR=\"$HOME/Gone\"\n", "XDG_DOCUMENTS_DIR=\"\n",
                                "XDG_DOCUMENTS_DIR=\"relative\"\n"}) {
        writeUserDirs(useless);
        EXPECT_EQ(documentFolder(), home + "/Documents") << useless;
    }
}

ConfigFiles filesOf(std::vector<std::string> words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size());
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    return configFilesOf(arguments);
}

TEST(ConfigFiles, AreTakenFromEveryFormOfTheOptions) {
    ConfigFiles shortForms = filesOf({"vemocad", "a.dxf", "-c", "one.json", "-utwo.json"});
    EXPECT_EQ(shortForms.system, "one.json");
    EXPECT_EQ(shortForms.user, "two.json");
    ConfigFiles longForms = filesOf({"vemocad", "--config=one.json", "--userconfig", "two.json"});
    EXPECT_EQ(longForms.system, "one.json");
    EXPECT_EQ(longForms.user, "two.json");
    ConfigFiles others = filesOf({"vemocad", "-f", "-c", "-s", "-u", "--", "-c", "x"});
    EXPECT_EQ(others.system, "");
    EXPECT_EQ(others.user, "");
}

}  // namespace
}  // namespace vemoapp
