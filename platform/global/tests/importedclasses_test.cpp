#include "global/importedclasses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

struct ImportedClass {
    const wchar_t* name;
    const wchar_t* parent;
    void (*begin)();
    void (*end)();
    OdRxClass* (*description)();
};

template <class Class>
ImportedClass row(const wchar_t* name, const wchar_t* parent) {
    return {name, parent, Class::rxInit, Class::rxUninit, Class::desc};
}

constexpr const wchar_t* kRoot = L"OdRxObject";
constexpr const wchar_t* kSubCommand = L"VosiSubCommandRequest";

const std::vector<ImportedClass>& importedClasses() {
    static const std::vector<ImportedClass> classes = {
        row<vosi::VosiApView>(L"VosiApView", kRoot),
        row<vosi::VosiGsFloatObjectActionPE>(L"VosiGsFloatObjectActionPE", kRoot),
        row<vosi::VosiRequest>(L"VosiRequest", kRoot),
        row<vosi::VosiSubCommandRequest>(kSubCommand, L"VosiRequest"),
        row<vosi::VosiSubCommandPointRequest>(L"VosiSubCommandPointRequest", kSubCommand),
        row<vosi::VosiSubCommandAngleRequest>(L"VosiSubCommandAngleRequest", kSubCommand),
        row<vosi::VosiSubCommandDistRequest>(L"VosiSubCommandDistRequest", kSubCommand),
        row<vosi::VosiSubCommandEntselRequest>(L"VosiSubCommandEntselRequest", kSubCommand),
        row<vosi::VosiSubCommandStringRequest>(L"VosiSubCommandStringRequest", kSubCommand),
        row<vosi::VosiSubCommandKeywordRequest>(L"VosiSubCommandKeywordRequest", kSubCommand),
        row<vosi::VosiSubCommandIntRequest>(L"VosiSubCommandIntRequest", kSubCommand),
        row<vosi::VosiSubCommandRealRequest>(L"VosiSubCommandRealRequest", kSubCommand),
        row<vosi::HdiRxModule>(L"HdiRxModule", L"OdRxModule"),
    };
    return classes;
}

class PointRequest : public vosi::VosiSubCommandPointRequest {};

class ImportedClasses : public testing::Test {
  protected:
    ImportedClasses() { odInitialize(&services); }
    ~ImportedClasses() override { odUninitialize(); }

    static void beginAll() {
        for (const ImportedClass& imported : importedClasses()) {
            imported.begin();
        }
    }
    static void endAll() {
        std::vector<ImportedClass> lastFirst = importedClasses();
        std::reverse(lastFirst.begin(), lastFirst.end());
        for (const ImportedClass& imported : lastFirst) {
            imported.end();
        }
    }

    OdStaticRxObject<ExSystemServices> services;
};

TEST_F(ImportedClasses, StandUnderTheirParentsWhileInitialised) {
    for (int life = 0; life < 2; ++life) {
        beginAll();
        for (const ImportedClass& imported : importedClasses()) {
            ASSERT_NE(imported.description(), nullptr) << OdStringToUtf8String(imported.name);
            EXPECT_TRUE(imported.description()->name() == imported.name);
            EXPECT_TRUE(imported.description()->myParent()->name() == imported.parent);
        }
        endAll();
        for (const ImportedClass& imported : importedClasses()) {
            EXPECT_EQ(imported.description(), nullptr);
        }
    }
}

TEST_F(ImportedClasses, AreAnsweredByWhatModulesDeriveFromThem) {
    beginAll();
    {
        const OdRxObjectPtr object = OdRxObjectImpl<PointRequest>::createObject();
        EXPECT_FALSE(vosi::VosiRequest::cast(object.get()).isNull());
        EXPECT_FALSE(vosi::VosiSubCommandRequest::cast(object.get()).isNull());
        EXPECT_TRUE(vosi::VosiSubCommandAngleRequest::cast(object.get()).isNull());
        EXPECT_TRUE(vosi::HdiRxModule::cast(object.get()).isNull());
    }
    endAll();
}

TEST(DialogLayer, IsUpUntilEachStartHasItsEnd) {
    vosi::core_ui_dlg_uninitialize();
    EXPECT_FALSE(vosi::core_ui_dlg_is_initialized());
    vosi::core_ui_dlg_initialize();
    vosi::core_ui_dlg_initialize();
    vosi::core_ui_dlg_uninitialize();
    EXPECT_TRUE(vosi::core_ui_dlg_is_initialized());
    vosi::core_ui_dlg_uninitialize();
    EXPECT_FALSE(vosi::core_ui_dlg_is_initialized());
}

}  // namespace
