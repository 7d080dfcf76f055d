// The application service object by position, as the runtime's system services and as its host. The
// setting "folder" names the test's folder.
#include <cstdarg>
#include <cstdint>
#include <ctime>

#include "slotchecks.h"
#include "slothosttables.h"
#include "slotlibrary.h"
#include "testjournal.h"

using slots::call;
using slots::ofService;

namespace {

using Name = const OdString&;

constexpr unsigned int kSomeCode = 57;

OdString pathTo(const char* name) {
    return OdUtf8StringToOdString(journal::setting("folder") + '/' + name);
}

OdStringArray listOf(std::initializer_list<OdString> texts) {
    OdStringArray list;
    for (const OdString& text : texts) {
        list.append(text);
    }
    return list;
}

// The collected names stand behind what the list held; the mask fits whatever the case.
void expectCollects(const void* services, int slot) {
    OdStringArray list = listOf({L"held before"});
    call<void(OdStringArray&, Name, Name)>(services, ofService(slot), list, pathTo("support"),
                                           L"*.LIN");
    EXPECT_EQ(list, listOf({L"held before", pathTo("support/Dashes.lin")}));
}

void expectNewUndoControllers(const void* services, int slot) {
    const auto first = call<OdDbUndoControllerPtr()>(services, ofService(slot));
    const auto second = call<OdDbUndoControllerPtr()>(services, ofService(slot));
    ASSERT_FALSE(first.isNull() || second.isNull());
    EXPECT_FALSE(first == second);
}

void expectNoPassword(const void* services, int slot) {
    OdPassword password = L"as it was";
    EXPECT_FALSE((call<bool(Name, bool, OdPassword&)>(services, ofService(slot), L"plan.dwg", false,
                                                      password)));
    EXPECT_EQ(password, L"as it was");
}

}  // namespace

SLOT_CHECK(checkSystemServiceSlots) {
    const void* system = odrxSystemServices();
    const OdString file = pathTo("support/Dashes.lin");
    using Open = OdStreamBufPtr(Name, std::uint32_t, std::uint32_t, std::uint32_t);
    const auto stream = call<Open>(system, ofService(slots::kCreateFile), file, kFileRead,
                                   kShareDenyNo, kOpenExisting);
    EXPECT_EQ(stream->length(), 5u);
    using Access = bool(Name, std::uint32_t);
    EXPECT_TRUE(call<Access>(system, ofService(slots::kAccessFile), file, kFileRead));
    EXPECT_FALSE(call<Access>(system, ofService(slots::kAccessFile), pathTo("absent"), kFileRead));
    EXPECT_GT(call<std::time_t(Name)>(system, ofService(slots::kGetFileCTime), file), 1000);
    EXPECT_EQ(call<std::time_t(Name)>(system, ofService(slots::kGetFileMTime), file), 1000);
    EXPECT_EQ(call<std::int64_t(Name)>(system, ofService(slots::kGetFileSize), file), 5);

    using Format = OdString(unsigned int, va_list*);
    using FormatRest = OdString (*)(const void*, unsigned int, ...);
    const auto text = call<Format>(system, ofService(slots::kFormatMessage), kSomeCode, nullptr);
    EXPECT_EQ(text, odrxSystemServices()->formatMessage(kSomeCode, nullptr));
    EXPECT_FALSE(text.isEmpty());
    EXPECT_EQ(slots::entryOf<FormatRest>(system, ofService(slots::kFormatMsg))(system, kSomeCode),
              text);
    EXPECT_EQ(call<OdCodePageId()>(system, ofService(slots::kSystemCodePage)),
              odrxSystemServices()->systemCodePage());
    using LoadLibrary = void*(Name, bool);
    EXPECT_EQ(call<LoadLibrary>(system, ofService(slots::kLoadModuleLib), L"libabsent.so", true),
              nullptr);
    EXPECT_NE(
        call<LoadLibrary>(system, ofService(slots::kLoadModuleLib), L"libslotmodule.so", true),
        nullptr);
}

SLOT_CHECK(checkAppendedSystemSlots) {
    const void* system = odrxSystemServices();
    using Find = OdString(Name, OdDbBaseDatabase*, int);
    EXPECT_EQ(
        call<Find>(system, ofService(slots::kFindFile), pathTo("SUPPORT/DASHES.lin"), nullptr, 0),
        pathTo("support/Dashes.lin"));
    expectNewUndoControllers(system, slots::kNewUndoController);
    expectCollects(system, slots::kCollectFilePaths);
    EXPECT_EQ((call<OdString(Name, OdFontType)>(system, ofService(slots::kGetSubstituteFont),
                                                L"txt.shx", kFontTypeShx)),
              vodbSystemServices()->getSubstituteFont(L"txt.shx", kFontTypeShx));
    OdString fileName = L"as it was";
    EXPECT_FALSE((call<bool(const OdTtfDescriptor&, OdString&)>(
        system, ofService(slots::kTtfFileName), OdTtfDescriptor(), fileName)));
    EXPECT_EQ(fileName, L"as it was");
    expectNoPassword(system, slots::kGetPassword);
}

SLOT_CHECK(checkHostServiceSlots) {
    const void* host = vodbSystemServices();
    using Find = OdString(Name, OdDbBaseDatabase*, int);
    EXPECT_EQ(
        call<Find>(host, ofService(slots::kHostFindFile), pathTo("SUPPORT/DASHES.lin"), nullptr, 0),
        pathTo("support/Dashes.lin"));
    expectNewUndoControllers(host, slots::kHostNewUndoController);

    OdStringArray fontFolders;
    EXPECT_TRUE(
        call<bool(OdStringArray&)>(host, ofService(slots::kHostGetSystemFontFolders), fontFolders));
    EXPECT_EQ(fontFolders, listOf({pathTo("share/fonts")}));
    expectCollects(host, slots::kHostCollectFilePaths);
    EXPECT_EQ((call<OdString(int, Name, Name, Name)>(host, ofService(slots::kHostFileDialog), 0,
                                                     L"Open", L"dwg", L"*")),
              L"");

    EXPECT_EQ(call<OdString()>(host, ofService(slots::kHostGetTempPath)), pathTo("temp"));
    EXPECT_EQ(call<int()>(host, ofService(slots::kHostNumThreads)), 1);
    EXPECT_EQ((call<OdResult(OdRxObject*, std::uint32_t)>(
                  host, ofService(slots::kHostInitializeModelerBuilder), nullptr, 0u)),
              eNoInterface);
    OdString value;
    EXPECT_TRUE(
        (call<bool(Name, OdString&)>(host, ofService(slots::kHostGetEnv), L"TMPDIR", value)));
    EXPECT_EQ(value, pathTo("temp"));
    expectNoPassword(host, slots::kHostGetPassword);
}
