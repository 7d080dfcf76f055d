// The command line: what each option leaves in the tree, and the requests that end in the usage
// text.
#include <fcntl.h>
#include <unistd.h>
#include <utils/paths.h>

#include <cstdlib>
#include <filesystem>

#include "boot_support.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kUsageText =
    "欢迎使用 VemoCAD 2021. \n"
    "版本发布时间: \n"
    "版本发布时间: \n"
    "选项:\n"
    " -f, --file=FILE   打开的文件\n"
    " -t, --template=模板文件         使用指定模板文件创建新文件\n"
    " -s, --script=脚本文件           自动运行指定脚本文件\n"
    " -c, --config=配置文件           加载指定配置文件\n"
    " -u, --userconfig=用户配置文件   加载指定用户配置文件\n"
    " -p, --print\t\t\t\t      启动打印文件\n"
    " -L, --load=加载的模块           指定加载第三方模块\n"
    " -d, --debug=等级                输出日志等级(1-5)\n"
    " -h,-? --help                    显示当前帮助\n"
    "--upgrade=[URL]                  (可选)从指定网站进行升级\n"
    "报告错误请联系 support@vemocad.example.org\n";

class CommandLineTest : public BootTest {
  protected:
    std::string optionsOf(const std::vector<std::string>& arguments) {
        bootBare(arguments);
        std::string options = json(vo_runtime_config("ExeOption"));
        shutDown();
        return options;
    }

    // Boots in place of the test's process, with standard output in a file.
    void bootForUsage(const std::vector<std::string>& arguments) {
        const int file = ::open(folder.path("usage").c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
        ::dup2(file, STDOUT_FILENO);
        ::close(file);
        expectExit();
        boot(arguments);
        ::_exit(EXIT_FAILURE);
    }
};

TEST_F(CommandLineTest, OptionsInTheTree) {
    struct Row {
        std::vector<std::string> arguments;
        const char* options;
    };
    const std::string config = folder.file("other.json", Config{.coreLibrary = "[]"}.text());
    const Row rows[] = {
        {{}, "{}"},
        {{"a.dwg", "b.dwg"}, R"({"file":["a.dwg","b.dwg"]})"},
        {{"a.dwg", "-s", "x.ast", "b.dwg"}, R"({"script":"x.ast","file":["a.dwg","b.dwg"]})"},
        {{"-f", "c.dwg", "a.dwg"}, R"({"file":"c.dwg"})"},
        {{"-f", "c.dwg", "--file=d.dwg"}, R"({"file":"d.dwg"})"},
        {{"--", "-f", "名 字.dwg"}, R"({"file":["-f","名 字.dwg"]})"},
        {{"-t", "t.dwt", "--script", "x.ast"}, R"({"template":"t.dwt","script":"x.ast"})"},
        {{"-d", "5", "--debug=loud"}, "{}"},
        {{"--upgrade", "--upgrade=https://example.org"}, "{}"},
        {{"--upg"}, "{}"},  // long names may be cut short
        {{"-u", folder.path("data/u.json")}, "{}"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.options);
        EXPECT_EQ(optionsOf(row.arguments), row.options);
    }
    EXPECT_EQ(optionsOf({"-c", config}), R"({"template":")" + config + R"("})");
    EXPECT_EQ(optionsOf({"-c", config, "-t", "t.dwt"}), R"({"template":"t.dwt"})");
    EXPECT_EQ(optionsOf({"-t", "t.dwt", "-c", config}), R"({"template":")" + config + R"("})");
}

TEST_F(CommandLineTest, LoadOptionHoldsNoUsableValueAndLoadsNothing) {
    ASSERT_EQ(boot({"-L", "libalpha.so"}), 0);
    const VoJsonPtr load = vo_runtime_config("ExeOption/Load");
    ASSERT_TRUE(load);
    EXPECT_NE(load->valueType() & kElementNoValue, 0);
    // The option takes no argument, so what stands behind it is a file to open.
    EXPECT_EQ(json(vo_runtime_config("ExeOption/file")), R"(["libalpha.so"])");
    EXPECT_THAT(journalOf({"init libalpha"}), IsEmpty());
    EXPECT_THAT(libraryLog(), IsEmpty());
}

TEST_F(CommandLineTest, UsageRequestsPrintTheTextAndEndWithStatusZero) {
    testing::FLAGS_gtest_death_test_style = "fast";
    const std::vector<std::string> requests[] = {
        {"-?"},
        {"-h"},
        {"--help"},
        {"-p"},
        {"-f"},
        {"--bogus"},
        {"--load=module"},
        {"--print=plan.dwg"},
        {"--print"},
        {"a.dwg", "-s", "x.ast", "-x"},
    };
    for (const auto& request : requests) {
        SCOPED_TRACE(request.back());
        EXPECT_EXIT(bootForUsage(request), testing::ExitedWithCode(0), "");
        EXPECT_EQ(contentOf(folder.path("usage")), kUsageText);
        // The options come first, so nothing else has been touched.
        EXPECT_FALSE(std::filesystem::exists(userFile()));
    }
}

TEST_F(CommandLineTest, RuntimeBranchTellsWhereTheProcessLives) {
    bootBare();
    const VoJsonPtr runtime = vo_runtime_config("");
    const auto text = [&](const char* key) {
        const VoJsonPtr node = runtime->getProperty(key);
        return node ? node->strValue().str() : "missing";
    };
    EXPECT_EQ(text("ExeRootPath"), folder.path("bin"));
    EXPECT_EQ(text("AppDataPath"), folder.path("data"));
    EXPECT_EQ(text("DocumentPath"), folder.path("documents"));
    EXPECT_EQ(text("TempPath"), folder.path("temp"));
    EXPECT_EQ(voutTempPath().str(), folder.path("temp"));
    EXPECT_EQ(text("SysFontPath"), folder.path("fonts"));
    EXPECT_FALSE(text("packageName").empty());
    const VoJsonPtr database = runtime->getProperty("defaultWorkingDatabase");
    ASSERT_TRUE(database);
    EXPECT_FALSE(OdDbDatabase::cast(static_cast<OdRxObject*>(database->ptrValue())).isNull());

    OdAnsiString key;
    std::vector<std::string> keys;
    for (int index = 0; index < runtime->propertyCount(); ++index) {
        runtime->propertyAt(index, key);
        keys.push_back(key.str());
    }
    keys.resize(8);
    EXPECT_THAT(keys,
                ElementsAre("ExeRootPath", "AppDataPath", "DocumentPath", "TempPath", "SysFontPath",
                            "defaultWorkingDatabase", "ExeOption", "packageName"));
}

// Without even a program name there are no paths: nothing is found, nothing is saved, nothing
// falls.
TEST_F(CommandLineTest, WithoutArgumentsAtAll) {
    std::filesystem::current_path(folder.folder("elsewhere"));
    char* noArguments[] = {nullptr};
    ASSERT_EQ(vemo_root(noArguments, 0, &program), kVemoNoMainWindow);
    EXPECT_EQ(json(vo_runtime_config("ExeRootPath")), R"("")");
    EXPECT_EQ(json(vo_runtime_config("ExeOption")), "{}");
    EXPECT_EQ(vemo_exit(&program), 0);
    EXPECT_THAT(journalOf({"query App"}), ElementsAre("query AppDataPath"));
    EXPECT_THAT(libraryLog(), ElementsAre("4 voappservice loadUserConfig 创建文件失败！",
                                          "5 voappservice loadSystemConfig 查找VEMO配置文件失败",
                                          "4 voappservice loadUserConfig 创建文件失败！"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("elsewhere")));
}

}  // namespace
