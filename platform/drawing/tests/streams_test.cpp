// Streams, and the files that the system services answer for.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>

#include "testsupport.h"

namespace {

class Files : public RuntimeTest {
  protected:
    OdStreamBufPtr open(const OdString& name, std::uint32_t access = kFileRead,
                        std::uint32_t disposition = kOpenExisting) {
        return services.createFile(name, access, kShareDenyNo, disposition);
    }
    OdResult failureOf(const OdString& name, std::uint32_t access = kFileRead,
                       std::uint32_t disposition = kOpenExisting) {
        return raisedBy([&] { open(name, access, disposition); });
    }

    TempFolder folder;
};

std::string readAll(OdStreamBuf& stream) {
    std::string bytes;
    for (stream.seek(0, kSeekFromStart); !stream.isEof();) {
        bytes.push_back(static_cast<char>(stream.getByte()));
    }
    return bytes;
}

void put(OdStreamBuf& stream, const std::string& bytes) {
    stream.putBytes(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

// What holds for every stream that can be read and written; it begins empty.
void checkStream(OdStreamBuf& stream) {
    EXPECT_TRUE(stream.isEof());
    EXPECT_EQ(raisedBy([&] { stream.getByte(); }), eEndOfFile);
    put(stream, "0123456789");
    EXPECT_EQ(stream.seek(-3, kSeekFromEnd), 7u);
    EXPECT_EQ(stream.getByte(), '7');
    stream.putByte('x');
    EXPECT_EQ(stream.seek(-1, kSeekFromCurrent), 8u);
    EXPECT_EQ(stream.getByte(), 'x');
    EXPECT_EQ(readAll(stream), "01234567x9");

    char four[4];
    stream.seek(8, kSeekFromStart);
    EXPECT_EQ(raisedBy([&] { stream.getBytes(four, 4); }), eEndOfFile);
    stream.seek(10, kSeekFromStart);
    stream.getBytes(four, 0);
    EXPECT_EQ(stream.tell(), 10u);

    EXPECT_EQ(stream.seek(2, kSeekFromCurrent), 12u);
    EXPECT_TRUE(stream.isEof());
    EXPECT_EQ(raisedBy([&] { stream.getByte(); }), eEndOfFile);
    stream.seek(12, kSeekFromStart);
    stream.putByte('e');
    EXPECT_EQ(readAll(stream), std::string("01234567x9\0\0e", 13));

    EXPECT_EQ(stream.seek(INT64_MAX, kSeekFromStart), std::uint64_t{INT64_MAX});
    EXPECT_EQ(raisedBy([&] { stream.getByte(); }), eEndOfFile);
    stream.seek(INT64_MAX, kSeekFromStart);
    EXPECT_EQ(raisedBy([&] { stream.seek(1, kSeekFromCurrent); }), eInvalidInput);
    EXPECT_EQ(raisedBy([&] { stream.putByte('z'); }), eFileWriteError);
    EXPECT_EQ(raisedBy([&] { stream.seek(-1, kSeekFromStart); }), eInvalidInput);

    stream.seek(4, kSeekFromStart);
    stream.truncate();
    EXPECT_EQ(stream.length(), 4u);
    stream.seek(9, kSeekFromStart);
    stream.truncate();
    EXPECT_EQ(readAll(stream), "0123");
}

}  // namespace

TEST(MemoryStream, KeepsTheContract) {
    checkStream(*newOdMemoryStream());
}

TEST_F(Files, KeepTheContract) {
    checkStream(*open(folder.path("new"), kFileRead | kFileWrite, kCreateNew));
}

TEST_F(Files, AreReadAcrossTheBuffersEdge) {
    std::string contents;
    for (int i = 0; i < 20000; ++i) {
        contents.push_back(static_cast<char>(i * 7));
    }
    const OdStreamBufPtr stream = open(folder.write("big", contents));
    std::string part(9000, '\0');
    for (const std::int64_t start : {4090, 0, 8191, 11000}) {
        stream->seek(start, kSeekFromStart);
        stream->getBytes(part.data(), 9000);
        EXPECT_EQ(part, contents.substr(static_cast<std::size_t>(start), 9000));
    }
    EXPECT_EQ(readAll(*stream), contents);
}

TEST_F(Files, AreOpenedAsTheirDispositionSays) {
    const OdString name = folder.path("图纸.txt");
    constexpr std::uint32_t both = kFileRead | kFileWrite;
    EXPECT_EQ(failureOf(name), eFileNotFound);
    EXPECT_EQ(failureOf(name, both, kTruncateExisting), eFileNotFound);
    put(*open(name, kFileWrite, kCreateNew), "abc");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "图纸.txt"));
    EXPECT_EQ(failureOf(name, kFileWrite, kCreateNew), eCantOpenFile);
    EXPECT_EQ(readAll(*open(name, both, kOpenAlways)), "abc");
    EXPECT_EQ(open(name, kFileWrite, kTruncateExisting)->length(), 0u);
    put(*open(name, kFileWrite, kOpenExisting), "de");
    EXPECT_EQ(open(name, kFileWrite, kCreateAlways)->length(), 0u);
    EXPECT_EQ(failureOf(name, kFileRead, kCreateAlways), eInvalidInput);
    EXPECT_EQ(failureOf(name, 0), eInvalidInput);
    EXPECT_EQ(failureOf(name, kFileRead, 0), eInvalidInput);
}

TEST_F(Files, RefuseTheAccessTheyWereNotOpenedFor) {
    const OdString name = folder.write("file", "abc");
    const OdStreamBufPtr reading = open(name);
    EXPECT_EQ(raisedBy([&] { reading->putByte('x'); }), eNotOpenForWrite);
    EXPECT_EQ(raisedBy([&] { reading->truncate(); }), eNotOpenForWrite);
    EXPECT_EQ(raisedBy([&] { open(name, kFileWrite)->getByte(); }), eNotOpenForRead);
}

TEST_F(Files, RefuseWhatIsNoFile) {
    EXPECT_EQ(failureOf(L""), eNoFileName);
    EXPECT_EQ(failureOf(folder.path("")), eCantOpenFile);
    EXPECT_EQ(failureOf(folder.write("file", "") + L"/below"), eFileNotFound);
    const std::string pipe = folder.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(failureOf(folder.path("pipe")), eCantOpenFile);
    EXPECT_EQ(open(L"/dev/zero", kFileRead)->getByte(), 0);
    EXPECT_FALSE(services.accessFile(folder.path(""), kFileRead));
}

TEST_F(Files, FailInWordsThatNameTheFile) {
    const OdString name = folder.path("missing");
    try {
        open(name);
        FAIL() << "a missing file was opened";
    } catch (const OdError_FileException& error) {
        EXPECT_EQ(error.fileName(), name);
        EXPECT_EQ(error.description(),
                  L"File not found: " + name + L" (No such file or directory)");
    }
}

TEST_F(Files, TellTheirSizeTimeAndAccess) {
    const OdString name = folder.write("file", "12345");
    const OdString missing = folder.path("missing");
    EXPECT_EQ(services.getFileSize(name), 5);
    EXPECT_EQ(services.getFileSize(missing), -1);
    const std::time_t now = std::time(nullptr);
    EXPECT_LE(std::abs(services.getFileMTime(name) - now), 60);
    EXPECT_LE(std::abs(services.getFileCTime(name) - now), 60);
    EXPECT_EQ(services.getFileMTime(missing), -1);
    EXPECT_EQ(services.getFileCTime(missing), -1);
    EXPECT_TRUE(services.accessFile(name, kFileRead | kFileWrite));
    EXPECT_FALSE(services.accessFile(missing, kFileRead));
    std::filesystem::permissions(folder.path() / "file", std::filesystem::perms::none);
    EXPECT_EQ(services.accessFile(name, kFileRead), geteuid() == 0);
}

TEST_F(Files, AnswerMessagesByCode) {
    EXPECT_EQ(services.formatMsg(491, 3), L"Result code: 491");
    EXPECT_EQ(services.formatMessage(0xFFFFFFFFu, nullptr), L"Result code: 4294967295");
    EXPECT_EQ(services.systemCodePage(), OdCodePageId::kUtf8);
}
