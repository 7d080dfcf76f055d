// The roads from the drawing runtime's host to what modules provide: passwords, a modeler,
// messages.
#include <gmock/gmock.h>

#include "vemocadrun.h"

using testing::HasSubstr;
using testing::Not;

namespace vemoapp {

namespace {

TEST(VemocadDialogs, APasswordIsTypedUnseen) {
    VemocadRun run;
    const RunResult result =
        run.runOnTerminal({{"Command:", "PASSWORD plan.dwg"},
                           {"Password for plan.dwg:", "sesame"},
                           {"A password was supplied.", "PASSWORD part.dwg xref"},
                           {"Password for the external reference part.dwg:", ""},
                           {"No password was supplied.", "STATUS"},
                           {"entities", "QUIT"}});
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_THAT(result.output, Not(HasSubstr("sesame")));
    // What is typed afterwards is seen again.
    EXPECT_THAT(result.output, HasSubstr("STATUS"));
    EXPECT_THAT(result.output, HasSubstr("Closed 1 drawing"));
}

TEST(VemocadDialogs, APasswordComesFromAPipeAsTheNextLine) {
    VemocadRun run;
    const RunResult result = run.run({}, "PASSWORD plan.dwg\nsesame\nPASSWORD \"a\x1b[2Jb\"");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("A password was supplied."));
    // The input ends, and a name can't steer the terminal.
    EXPECT_THAT(result.output, HasSubstr("Password for a?[2Jb:\nNo password was supplied."));
}

TEST(VemocadDialogs, WithoutTheModulesTheAnswerIsNo) {
    VemocadRun run;
    run.copyApplication();
    std::filesystem::remove(run.path("bin/modules/libpassword.so"));
    std::filesystem::remove(run.path("bin/modules/libmodeler.so"));
    const RunResult result = run.run({}, "SERVICES\nPASSWORD plan.dwg\n");
    EXPECT_THAT(result.output, HasSubstr("absent   Core/GetPasswordServer"));
    EXPECT_THAT(result.output, Not(HasSubstr("Password for")));
}

TEST(VemocadDialogs, TheModelerAnswersThroughTheHost) {
    VemocadRun run;
    const RunResult result = run.run({}, "MODELER 2\nMODELER 9\nMODELER x\n");
    EXPECT_THAT(result.output, HasSubstr("The modeler answers eOk (code : 0)"));
    EXPECT_THAT(result.output, HasSubstr("The modeler answers eNotApplicable (code : 4)"));
    EXPECT_THAT(result.output, HasSubstr("MODELER type"));
}

TEST(VemocadDialogs, MessagesAreShownByCode) {
    VemocadRun run;
    const RunResult result = run.run({}, "MESSAGE 57 491-492 843\nMESSAGE 5-3\nMESSAGE 1-x\n");
    EXPECT_THAT(result.output, HasSubstr("  57  eFileNotFound (code : 57)\n"
                                         "  491  布局%d\n"
                                         "  492  .dwg 文件\n"
                                         "  843  错误卸载模块 \"%ls\"\\nOd错误: %ls\n"
                                         "> MESSAGE 5-3\nMESSAGE code..."));
    EXPECT_THAT(result.output, HasSubstr("> MESSAGE 1-x\nMESSAGE code..."));
}

}  // namespace

}  // namespace vemoapp
