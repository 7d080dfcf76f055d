#include <gtest/gtest.h>

#include <vector>

#include "utils/elementvalue.h"
#include "utils/paths.h"

namespace {

VoJsonPtr systemTree() {
    VoJsonPtr root = ElementValue::createObject(kElementObject);
    VoJsonPtr runtime = root->makePath("Runtime");
    runtime->set_propertys("ExeRootPath", OdAnsiString("/opt/应用"), false);
    runtime->set_propertys("AppDataPath", OdAnsiString("/home/u/%TEMPPATH%"), false);
    runtime->set_propertys("DocumentPath", OdAnsiString("/home/u/Documents"), false);
    runtime->set_propertys("TempPath", OdAnsiString("/tmp/vemo"), false);
    return root;
}

OdAnsiString evaluated(const char* path) {
    return vosiutEvaluatePath(path, systemTree());
}

std::vector<std::string> enumerated(const VoJsonPtr& node) {
    OdArray<OdAnsiString> narrow;
    narrow.append("kept");
    voutEnumPaths(node, narrow);
    OdStringArray wide;
    wide.append(L"kept");
    voutEnumPathsW(node, wide);
    EXPECT_EQ(narrow.size(), wide.size());
    std::vector<std::string> texts;
    for (unsigned index = 0; index < narrow.size(); ++index) {
        texts.push_back(narrow[index].str());
        EXPECT_EQ(OdStringToUtf8String(wide.at(index)).str(), texts.back());
    }
    return texts;
}

using Texts = std::vector<std::string>;

TEST(PathVariables, AreReplacedInOnePass) {
    EXPECT_STREQ(evaluated("%EXEPATH%/Fonts"), "/opt/应用/Fonts");
    EXPECT_STREQ(evaluated("%TEMPPATH%:%DOCUMENTPATH%"), "/tmp/vemo:/home/u/Documents");
    EXPECT_STREQ(evaluated("%APPDATAPATH%/x"), "/home/u/%TEMPPATH%/x");
    EXPECT_STREQ(evaluated("/no/variables"), "/no/variables");
    EXPECT_STREQ(evaluated(""), "");
}

TEST(PathVariables, StayInTheTextWhenUnknownOrWithoutAValue) {
    for (const char* path : {"%NOSUCH%/x", "%SYSFONTPATH%/x", "%exepath%", "100%", "%", "%%", "%%%",
                             "%EXEPATH", "EXEPATH%", "% EXEPATH%"}) {
        EXPECT_STREQ(evaluated(path), path);
    }
    EXPECT_STREQ(evaluated("100%/%EXEPATH%"), "100%//opt/应用");
    EXPECT_STREQ(evaluated("%%TEMPPATH%%"), "%/tmp/vemo%");
    EXPECT_STREQ(evaluated("%NOSUCH%TEMPPATH%"), "%NOSUCH/tmp/vemo");
    EXPECT_STREQ(vosiutEvaluatePath("%EXEPATH%/x", nullptr), "%EXEPATH%/x");
}

TEST(PathVariables, TakeTextsAlone) {
    const VoJsonPtr root = systemTree();
    root->makePath("Runtime")->set_propertyI("TempPath", 7, false);
    EXPECT_STREQ(vosiutEvaluatePath("%TEMPPATH%", root), "%TEMPPATH%");
    root->makePath("Runtime")->set_propertys("TempPath", static_cast<const char*>(nullptr), false);
    EXPECT_STREQ(vosiutEvaluatePath("%TEMPPATH%", root), "%TEMPPATH%");
    root->makePath("Runtime")->set_propertys("TempPath", OdAnsiString(""), false);
    EXPECT_STREQ(vosiutEvaluatePath("%TEMPPATH%", root), "");
}

TEST(PathVariables, FindTheLanguageOfTheUserFirst) {
    const VoJsonPtr root = systemTree();
    EXPECT_STREQ(vosiutEvaluatePath("%LANGUAGE%", root), "zh-CN");
    EXPECT_STREQ(vosiutEvaluatePath("%LANGUAGE%", nullptr), "zh-CN");
    root->makePath("Core/AppInfo")->set_propertys("language", OdAnsiString("en-GB"), false);
    EXPECT_STREQ(vosiutEvaluatePath("%LANGUAGE%", root), "en-GB");
    root->makePath("User")->set_propertys("language", OdAnsiString(""), false);
    EXPECT_STREQ(vosiutEvaluatePath("%LANGUAGE%", root), "en-GB");
    root->makePath("User")->set_propertys("language", OdAnsiString("de"), false);
    EXPECT_STREQ(vosiutEvaluatePath("a/%LANGUAGE%/b", root), "a/de/b");
}

TEST(PathLists, ComeFromTextsAndFromArraysOfTexts) {
    const VoJsonPtr text = ElementValue::createObject(kElementText);
    text->set_values("/字体");
    EXPECT_EQ(enumerated(text), (Texts{"kept", "/字体"}));

    const VoJsonPtr array = ElementValue::createObject(kElementArray);
    EXPECT_EQ(enumerated(array), Texts{"kept"});
    for (const char* path : {"/b", "", "/a", "/b"}) {
        const VoJsonPtr item = ElementValue::createObject(kElementText);
        item->set_values(path);
        array->append(item);
    }
    array->append(ElementValue::createObject(kElementObject));
    array->append(ElementValue::createObject(kElementInteger));
    EXPECT_EQ(enumerated(array), (Texts{"kept", "/b", "", "/a", "/b"}));

    EXPECT_EQ(enumerated(nullptr), Texts{"kept"});
    EXPECT_EQ(enumerated(systemTree()), Texts{"kept"});
    EXPECT_EQ(enumerated(ElementValue::createObject(kElementReal)), Texts{"kept"});
}

TEST(TemporaryFolder, IsTheOneThatWasSet) {
    EXPECT_STREQ(voutTempPath(), "");
    setTempPath("/tmp/vemo");
    EXPECT_STREQ(voutTempPath(), "/tmp/vemo");
}

}  // namespace
