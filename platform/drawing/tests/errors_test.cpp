#include "testsupport.h"

TEST(Errors, SayWhatTheyAreAbout) {
    EXPECT_EQ(OdError(eNotInitializedYet).description(), L"Not initialized yet");
    EXPECT_EQ(OdError(static_cast<OdResult>(12)).description(), L"Result code: 12");
    EXPECT_EQ(OdError(L"own text").code(), eExtendedError);
    EXPECT_EQ(OdError(L"own text").description(), L"own text");
    EXPECT_EQ(OdError_InvalidKey(L"k").description(), L"Invalid key: \"k\"");
    EXPECT_EQ(OdError_NotThatKindOfClass(nullptr, OdRxObject::desc()).description(),
              L"Not that kind of class: an unknown class is no OdRxObject");
}

TEST(Errors, TheGeometryHookRaisesUntilItIsReplaced) {
    EXPECT_EQ(raisedBy([] { OdGeContext::gErrorFunc(eInvalidInput); }), eInvalidInput);
    OdGeContext::gErrorFunc = [](OdResult) {};
    EXPECT_EQ(raisedBy([] { OdGeContext::gErrorFunc(eInvalidInput); }), eOk);
}

TEST(Errors, AnAssertionIsReportedAndPasses) {
    testing::internal::CaptureStderr();
    OdAssert("bFound", "unit", 12);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Assertion failed: bFound (unit:12)\n");
}

TEST(Errors, TheTraceGoesNowhereWithoutASink) {
    EXPECT_NO_THROW(odTrace(L"message"));
}
