// JSON text in and out, through files as the application reads and writes it.
#include <global/log.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/testfolder.h"
#include "utils/elementvalue.h"
#include "utils/vojson.h"

namespace {

class JsonText : public testing::Test {
  protected:
    // What is wrong with the texts that can't be read is another test's matter.
    void SetUp() override { vo_set_print_log_level(5); }

    VoJsonPtr read(const std::string& text) const {
        VoJson json;
        return json.read(OdAnsiString(folder.file("read.json", text)), -1, nullptr) ? json
                                                                                    : VoJson();
    }
    /// The tree of the text, which has to be read, as compact text again.
    std::string again(const std::string& text) const {
        const VoJsonPtr tree = read(text);
        EXPECT_TRUE(tree) << text.substr(0, 100);
        return tree ? tree->writeJson().str() : "";
    }
    /// The node after it has been in a file.
    VoJsonPtr throughFile(const VoJsonPtr& node) const {
        const std::string path = folder.path("written.json");
        EXPECT_TRUE(VoJson(node).write(path, VoJson::kIndented, nullptr));
        VoJson json;
        EXPECT_TRUE(json.read(OdAnsiString(path), -1, nullptr));
        return json;
    }
    double realThroughFile(double number) const {
        const VoJsonPtr node = ElementValue::createObject(kElementReal);
        node->set_valueF(number);
        const VoJsonPtr back = throughFile(node);
        EXPECT_EQ(back->valueType(), kElementReal) << number;
        return back->floatValue();
    }
    std::string textThroughFile(const std::string& text) const {
        const VoJsonPtr node = ElementValue::createObject(kElementText);
        node->set_values(OdAnsiString(text));
        return throughFile(node)->strValue().str();
    }

    TestFolder folder;
};

std::string bits(double number) {
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

}  // namespace

TEST_F(JsonText, KindsOfNumbersAreExact) {
    EXPECT_EQ(again("[-9223372036854775808,9223372036854775807,9223372036854775808,"
                    "18446744073709551615,0,-1]"),
              "[-9223372036854775808,9223372036854775807,9223372036854775808,"
              "18446744073709551615,0,-1]");
    EXPECT_EQ(read("9223372036854775807")->valueType(), kElementInteger);
    EXPECT_EQ(read("9223372036854775808")->valueType(), kElementUnsigned);
    EXPECT_EQ(read("18446744073709551616")->valueType(), kElementReal);
    EXPECT_EQ(read("-9223372036854775809")->floatValue(), -9223372036854775808.0);
    EXPECT_EQ(read("1.0")->valueType(), kElementReal);
    EXPECT_EQ(read("1e2")->valueType(), kElementReal);
    EXPECT_TRUE(std::signbit(read("-0")->floatValue()));
}

TEST_F(JsonText, RealsComeBackBitForBit) {
    using Limits = std::numeric_limits<double>;
    for (const double number :
         {0.1, 1.0, -0.0, 1e21, 1e308, Limits::max(), Limits::min(), Limits::denorm_min(),
          2.2250738585072011e-308, 123456789012345680.0, 9007199254740993.0, 5e-324, 0.3}) {
        EXPECT_EQ(bits(realThroughFile(number)), bits(number)) << number;
    }
    const VoJsonPtr array = ElementValue::createObject(kElementArray);
    std::mt19937_64 random(7);
    for (int index = 0; index < 20000; ++index) {
        const std::uint64_t pattern = random();
        double number = 0;
        std::memcpy(&number, &pattern, sizeof number);
        const VoJsonPtr item = ElementValue::createObject(kElementReal);
        item->set_valueF(std::isfinite(number) ? number : 0.5);
        array->append(item);
    }
    const VoJsonPtr back = throughFile(array);
    ASSERT_EQ(back.ArrayCount(), array.ArrayCount());
    for (int index = 0; index < array.ArrayCount(); ++index) {
        ASSERT_EQ(bits(back(index)->floatValue()), bits(array(index)->floatValue())) << index;
    }
}

TEST_F(JsonText, HardDecimalNumbersRoundToNearest) {
    EXPECT_EQ(read("18446744073709551615.9")->floatValue(), 18446744073709551616.0);
    EXPECT_EQ(read("2.4703282292062328e-324")->floatValue(), 5e-324);
    EXPECT_EQ(read("2.4703282292062327e-324")->floatValue(), 0.0);
    EXPECT_EQ(read("1e-99999999999999999999")->floatValue(), 0.0);
    EXPECT_TRUE(std::signbit(read("-1e-400")->floatValue()));
    const std::string zeros(400, '0');
    EXPECT_EQ(read("0." + zeros + "1")->floatValue(), 0.0);
    EXPECT_EQ(read("0." + zeros + "1e401")->floatValue(), 1.0);
    EXPECT_EQ(read("9007199254740993." + zeros)->floatValue(), 9007199254740992.0);
    EXPECT_EQ(read("9007199254740993." + zeros + "1")->floatValue(), 9007199254740994.0);
    for (const char* tooBig : {"1e400", "-1e309", "1e999", "1.7976931348623159e308",
                               "12345678901234567890e300", "1e99999999999999999999"}) {
        EXPECT_TRUE(read(tooBig).isNull()) << tooBig;
    }
}

TEST_F(JsonText, NumbersWithoutAFormBecomeNull) {
    const VoJsonPtr array = ElementValue::createObject(kElementArray);
    for (const double number : {std::numeric_limits<double>::infinity(), std::nan("")}) {
        const VoJsonPtr item = ElementValue::createObject(kElementReal);
        item->set_valueF(number);
        array->append(item);
    }
    array->append(ElementValue::createObject(kElementPointer));
    const VoJsonPtr time = ElementValue::createObject(kElementTime);
    time->set_valueT(1626322924);
    array->append(time);
    EXPECT_EQ(array->writeJson(), "[null,null,null,1626322924]");
    EXPECT_EQ(throughFile(array)(3)->timeValue(), 1626322924);
    EXPECT_EQ(throughFile(array)(0)->valueType(), kElementNull | kElementNoValue);
}

TEST_F(JsonText, TextsComeBackAsTheyWere) {
    std::string controls;
    for (char c = 0; c < 0x20; ++c) {
        controls.push_back(c);
    }
    for (const std::string& text :
         {std::string(), controls, std::string("a\0b", 3), std::string("\"\\/\x7f"),
          std::string("字体 \u00e9 \U0001F600 \uFFFF"), std::string(100'000, 'x')}) {
        EXPECT_EQ(textThroughFile(text), text);
    }
    const VoJsonPtr object = ElementValue::createObject(kElementObject);
    const OdAnsiString key(std::string("k\0\"\n", 4));
    object->set_propertyB(key, true, false);
    EXPECT_TRUE(throughFile(object)->getProperty(key)->boolValue());
    EXPECT_EQ(read(R"("\u0041\ud83d\ude00\u0000\/")")->strValue().str(), std::string("A😀\0/", 7));
}

TEST_F(JsonText, IllFormedTextIsWrittenReadably) {
    EXPECT_EQ(textThroughFile("a\x80z"), "a\uFFFDz");
    EXPECT_EQ(textThroughFile("\xE4\xB8"), "\uFFFD");
    EXPECT_EQ(textThroughFile("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
    const VoJsonPtr object = ElementValue::createObject(kElementObject);
    object->set_propertyB("\xFF", true, false);
    EXPECT_EQ(object->writeJson(), "{\"\uFFFD\":true}");
}

TEST_F(JsonText, LastOfEqualKeysWinsInThePlaceOfTheFirst) {
    EXPECT_EQ(again(R"({"a":1,"b":{"x":1},"a":[2],"b":{},"":0})"), R"({"a":[2],"b":{},"":0})");
    std::string many = "{";
    for (int index = 0; index < 100; ++index) {
        many += "\"k" + std::to_string(index % 50) + "\":" + std::to_string(index) + ',';
    }
    const VoJsonPtr object = read(many + "\"end\":0}");
    ASSERT_TRUE(object);
    EXPECT_EQ(object->propertyCount(), 51);
    EXPECT_EQ(object->getProperty("k49")->longlongValue(), 99);
    EXPECT_EQ(object->propertyIndex("k49"), 50);
}

TEST_F(JsonText, OnlyStrictJsonIsRead) {
    for (const std::string& text : {std::string(),
                                    std::string(" \n"),
                                    std::string("{\"a\":1,}"),
                                    std::string("[1 2]"),
                                    std::string("{} x"),
                                    std::string("{}{}"),
                                    std::string("[01]"),
                                    std::string("[+1]"),
                                    std::string("[.5]"),
                                    std::string("[1.]"),
                                    std::string("NaN"),
                                    std::string("'a'"),
                                    std::string("{a:1}"),
                                    std::string("// c\n1"),
                                    std::string("\"a\nb\""),
                                    std::string("[1"),
                                    std::string("{}\0", 3),
                                    std::string("[\0]", 3),
                                    std::string("\"a\0b\"", 5),
                                    std::string("{\"a\":tru}"),
                                    std::string("\xFF\xFE{}"),
                                    std::string("\xEF\xBB\xBF"),
                                    std::string("\xEF\xBB\xBF\xEF\xBB\xBF{}"),
                                    std::string("\"\x80\""),
                                    std::string("\"\xC0\xAF\""),
                                    std::string("\"\xED\xA0\x80\""),
                                    std::string("\"\xE4\xB8\""),
                                    std::string(R"("\ud800")"),
                                    std::string(R"("\udc00")"),
                                    std::string(R"({"\udfff":1})"),
                                    std::string(R"("\ud800\u0041")"),
                                    std::string(R"("\x41")")}) {
        EXPECT_TRUE(read(text).isNull()) << text;
    }
    EXPECT_EQ(again("\xEF\xBB\xBF {\"a\" : [ ] }\r\n\t"), R"({"a":[]})");
    EXPECT_EQ(again("null"), "null");
}

TEST_F(JsonText, RandomNumbersReadAsTheCLibraryReadsThem) {
    constexpr unsigned seed = 12;
    std::mt19937_64 random(seed);
    std::string text = "[0";
    std::vector<std::string> numbers;
    for (int round = 0; round < 5000; ++round) {
        std::string number = random() % 2 ? "-" : "";
        const std::uint64_t digits = random() >> (random() % 64);
        number += std::to_string(digits);
        // Some are longer than any integer.
        number += digits > 0 && random() % 4 == 0 ? std::to_string(random() % 100) : "";
        number += random() % 2 ? '.' + std::to_string(random() >> (random() % 64)) : "";
        number +=
            random() % 4 == 0 ? "e" + std::to_string(static_cast<int>(random() % 400) - 200) : "";
        text += ',' + number;
        numbers.push_back(number);
    }
    const VoJsonPtr array = read(text + ']');
    ASSERT_EQ(array.ArrayCount(), 5001);
    for (int index = 1; index <= 5000; ++index) {
        const std::string& number = numbers[static_cast<std::size_t>(index) - 1];
        const VoJsonPtr node = array(index);
        if (node->valueType() == kElementReal) {
            ASSERT_EQ(bits(node->floatValue()), bits(std::strtod(number.c_str(), nullptr)))
                << number;
        } else {
            ASSERT_EQ(node->writeJson(), OdAnsiString(number)) << "seed " << seed;
        }
        // An integer is a real only where no integer holds it.
        if (number.find_first_of(".e") == std::string::npos && number.size() < 19 &&
            number != "-0") {
            ASSERT_EQ(node->valueType(), kElementInteger) << number;
        }
    }
}

// Nodes are read into blocks, several to one, and leave them in any order.
TEST_F(JsonText, NodesOutliveTheirTree) {
    std::string text = "[0";
    for (int index = 1; index < 2000; ++index) {
        text += R"(,{"n":)" + std::to_string(index) + R"(,"text":"longer than a short text"})";
    }
    VoJsonPtr root = read(text + ']');
    std::mt19937 random(13);
    std::vector<VoJsonPtr> kept;
    for (int index = 1; index < 2000; ++index) {
        if (random() % 3 == 0) {
            kept.push_back(random() % 2 ? root(index) : root(index)->getProperty("text"));
        }
    }
    root = nullptr;
    std::shuffle(kept.begin(), kept.end(), random);
    for (VoJsonPtr& node : kept) {
        const VoJsonPtr held = node->getProperty("text");
        const VoJsonPtr& leaf = held ? held : node;
        ASSERT_EQ(leaf->strValue(), "longer than a short text");
        node = nullptr;
    }
}

TEST_F(JsonText, EndsWithinACharacterAreRefused) {
    for (const std::string character : {"\xC3\xA9", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"}) {
        for (std::size_t length = 1; length < character.size(); ++length) {
            EXPECT_TRUE(read(std::string(64, ' ') + '"' + character.substr(0, length)).isNull());
        }
    }
}

TEST_F(JsonText, DepthIsBounded) {
    const auto brackets = [](int count) {
        return std::string(static_cast<std::size_t>(count), '[') +
               std::string(static_cast<std::size_t>(count), ']');
    };
    constexpr int most = IElementValueBase::kMaxDepth;
    EXPECT_EQ(again(brackets(most)), brackets(most));
    EXPECT_TRUE(read(brackets(most + 1)).isNull());
    EXPECT_TRUE(read(brackets(100'000)).isNull());
    std::string objects;
    for (int level = 0; level < 100'000; ++level) {
        objects += "{\"k\":";
    }
    EXPECT_TRUE(read(objects).isNull());
}

TEST_F(JsonText, IndentedFormIsForPeople) {
    const VoJsonPtr tree =
        read(R"({"名字":"a/b\u00e9","list":[1,{"x":null},[]],"none":{},"real":1.0,"on":true})");
    ASSERT_TRUE(tree);
    const std::string path = folder.path("out.json");
    ASSERT_TRUE(VoJson(tree).write(path, VoJson::kIndented, nullptr));
    EXPECT_EQ(contentOf(path), R"({
    "名字": "a/bé",
    "list": [
        1,
        {
            "x": null
        },
        []
    ],
    "none": {},
    "real": 1.0,
    "on": true
}
)");
    ASSERT_TRUE(VoJson(tree).write(path, VoJson::kCompact, nullptr));
    EXPECT_EQ(contentOf(path), tree->writeJson().str());
}
