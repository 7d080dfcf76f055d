// Trees in files: what can be read, what is logged, and that a write never leaves half a file.
#include <global/log.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "support/testfolder.h"
#include "utils/elementvalue.h"
#include "utils/safefile.h"
#include "utils/vojson.h"

namespace {

namespace fs = std::filesystem;

VoJson treeOf(int number) {
    const VoJsonPtr object = ElementValue::createObject(kElementObject);
    object->set_propertyI("number", number, false);
    return VoJson(object);
}

bool written(const VoJson& json, const std::string& path) {
    return json.write(path, VoJson::kCompact, nullptr);
}

int entriesIn(const std::string& folder) {
    return static_cast<int>(std::distance(fs::directory_iterator(folder), {}));
}

mode_t modeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

/// The limit stands in for a disk that is full.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

  private:
    rlimit before{};
    void (*handler)(int) = SIG_DFL;
};

class VoJsonFile : public testing::Test {
  protected:
    void SetUp() override { vo_set_print_log_level(4); }

    /// What the log says about reading the file, which has to fail.
    std::string complaintAbout(const std::string& path) const {
        const std::string log = folder.path("log");
        fs::remove(log);
        vo_set_Log_file(OdAnsiString(log));
        vo_set_print_log_to_file(true);
        VoJson json(treeOf(1));
        const VoJson before = json;
        EXPECT_FALSE(json.read(OdAnsiString(path), -1, nullptr));
        EXPECT_EQ(json, before) << "the pointer changed";
        vo_set_print_log_to_file(false);
        return contentOf(log);
    }
    std::string complaintAboutText(const std::string& text) const {
        return complaintAbout(folder.file("bad.json", text));
    }

    TestFolder folder;
};

}  // namespace

TEST_F(VoJsonFile, SyntaxErrorIsLoggedWithItsPlace) {
    const std::string line = complaintAboutText("{\n  \"字体\": 1\n  \"b\": 2\n}");
    EXPECT_NE(line.find(" 4 vojson:"), std::string::npos) << line;
    EXPECT_NE(line.find(" read " + folder.path("bad.json") + ": line 3, column 3: Missing a comma"),
              std::string::npos)
        << line;
    EXPECT_NE(complaintAboutText("\xEF\xBB\xBF[\"é\", x]").find("line 1, column 7: "),
              std::string::npos);
    EXPECT_NE(complaintAboutText("[1]\n\n]").find("line 3, column 1: "), std::string::npos);
    EXPECT_NE(complaintAboutText(R"(["\n\n\n",
 1e999])")
                  .find("line 2, column 2: Number too big"),
              std::string::npos);
    EXPECT_NE(complaintAboutText("[\"a\x80\"]").find("line 1, column 4: Invalid encoding"),
              std::string::npos);
    EXPECT_NE(complaintAboutText(std::string(5000, '[')).find("Nested too deeply"),
              std::string::npos);
}

TEST_F(VoJsonFile, SyntaxErrorIsSilentAboveItsLevel) {
    vo_set_print_log_level(5);
    EXPECT_EQ(complaintAboutText("{"), "");
    vo_set_print_log_level(4);
    EXPECT_NE(complaintAboutText("{"), "");
}

TEST_F(VoJsonFile, WhatIsNoFileIsNoSyntaxError) {
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    for (const std::string& path :
         {folder.path("missing.json"), folder.path(), folder.path("fifo"), std::string()}) {
        EXPECT_EQ(complaintAbout(path), "") << path;
    }
}

TEST_F(VoJsonFile, NewFileTakesTheUmask) {
    const mode_t mask = ::umask(027);
    EXPECT_TRUE(written(treeOf(1), folder.path("new.json")));
    ::umask(mask);
    EXPECT_EQ(modeOf(folder.path("new.json")), 0640u);
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST_F(VoJsonFile, ReplacedFileKeepsItsModeAndReadersTheirText) {
    const std::string path = folder.file("user.json", "old");
    fs::permissions(path, fs::perms(0604));
    std::ifstream reader(path);
    EXPECT_TRUE(written(treeOf(2), path));
    EXPECT_EQ(modeOf(path), 0604u);
    EXPECT_EQ(contentOf(path), R"({"number":2})");
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "old") << "the old file was written to";
}

TEST_F(VoJsonFile, SymbolicLinksStay) {
    folder.folder("real");
    folder.folder("links");
    folder.link("links/second", "../real/user.json");
    const std::string first = folder.link("first", folder.path("links/second"));
    EXPECT_TRUE(written(treeOf(1), first)) << "to where nothing is";
    EXPECT_TRUE(written(treeOf(2), first));
    EXPECT_TRUE(fs::is_symlink(first));
    EXPECT_TRUE(fs::is_symlink(folder.path("links/second")));
    EXPECT_EQ(contentOf(folder.path("real/user.json")), R"({"number":2})");
    EXPECT_EQ(entriesIn(folder.path("real")), 1);

    folder.link("loop", "loop");
    EXPECT_FALSE(written(treeOf(1), folder.path("loop")));
}

TEST_F(VoJsonFile, NothingIsTouchedOnFailure) {
    const std::string path = folder.file("user.json", "old");
    EXPECT_FALSE(written(VoJson(), path));
    VoJsonPtr deep = ElementValue::createObject(kElementArray);
    for (int level = 0; level < IElementValueBase::kMaxDepth; ++level) {
        const VoJsonPtr parent = ElementValue::createObject(kElementArray);
        parent->append(deep);
        deep = parent;
    }
    EXPECT_FALSE(written(VoJson(deep), path));
    {
        const FullDisk disk(100);
        EXPECT_FALSE(voutWriteFileSafely(path, std::string(5000, 'x')));
        EXPECT_FALSE(voutWriteFileSafely(folder.path("new.json"), std::string(5000, 'x')));
        EXPECT_TRUE(voutWriteFileSafely(folder.path("small"), "fits"));
    }
    EXPECT_FALSE(voutWriteFileSafely(path + std::string("\0.new", 5), "cut at the NUL"));
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(entriesIn(folder.path()), 2);

    folder.folder("folder");
    for (const std::string& target : {folder.path("folder"), folder.path("folder/"),
                                      folder.path("missing/user.json"), std::string()}) {
        EXPECT_FALSE(written(treeOf(1), target)) << target;
    }
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    EXPECT_FALSE(written(treeOf(1), folder.path("fifo")));
    EXPECT_TRUE(fs::is_fifo(folder.path("fifo")));
    EXPECT_EQ(entriesIn(folder.path()), 4);
}

TEST_F(VoJsonFile, LongNamesAndBareNamesAreWritten) {
    const std::string name = std::string(250, 'n') + ".json";
    EXPECT_TRUE(written(treeOf(1), folder.path(name)));
    fs::current_path(folder.path());
    EXPECT_TRUE(written(treeOf(2), "bare.json"));
    EXPECT_EQ(contentOf(folder.path("bare.json")), R"({"number":2})");
    EXPECT_EQ(entriesIn(folder.path()), 2);
}
