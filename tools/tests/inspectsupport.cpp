#include "inspectsupport.h"

#include <rapidjson/error/en.h>
#include <rapidjson/pointer.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace fs = std::filesystem;

namespace {

using Text = rapidjson::StringBuffer;

constexpr const char* kNothing = "nothing";

const rapidjson::Value* valueAt(const rapidjson::Value& answer, const std::string& pointer) {
    return rapidjson::Pointer(pointer.c_str()).Get(answer);
}

rapidjson::Document parsed(const std::string& json) {
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    return document;
}

}  // namespace

std::string at(const rapidjson::Value& answer, const std::string& pointer) {
    const rapidjson::Value* value = valueAt(answer, pointer);
    if (!value) {
        return kNothing;
    }
    Text text;
    rapidjson::Writer<Text> writer(text);
    value->Accept(writer);
    return text.GetString();
}

std::string textAt(const rapidjson::Value& answer, const std::string& pointer) {
    const rapidjson::Value* value = valueAt(answer, pointer);
    return value && value->IsString() ? value->GetString() : kNothing;
}

const rapidjson::Value* entry(const rapidjson::Value& answer, const std::string& pointer,
                              const std::string& key, const std::string& text) {
    const rapidjson::Value* array = valueAt(answer, pointer);
    if (!array || !array->IsArray()) {
        return nullptr;
    }
    for (const rapidjson::Value& member : array->GetArray()) {
        if (textAt(member, "/" + key) == text) {
            return &member;
        }
    }
    return nullptr;
}

std::string misfit(const std::string& schema, const std::string& json) {
    const rapidjson::Document rules =
        parsed(vemoapp::readFile(fs::path(VEMO_SCHEMAS) / (schema + ".schema.json")));
    if (rules.HasParseError()) {
        return "the schema itself is no JSON";
    }
    const rapidjson::Document document = parsed(json);
    if (document.HasParseError()) {
        return std::string("no JSON: ") + rapidjson::GetParseError_En(document.GetParseError());
    }
    const rapidjson::SchemaDocument compiled(rules);
    rapidjson::SchemaValidator validator(compiled);
    if (document.Accept(validator)) {
        return "";
    }
    Text where;
    Text rule;
    validator.GetInvalidDocumentPointer().StringifyUriFragment(where);
    validator.GetInvalidSchemaPointer().StringifyUriFragment(rule);
    return std::string(where.GetString()) + " breaks " + validator.GetInvalidSchemaKeyword() +
           " of " + rule.GetString();
}

vemoapp::RunResult InspectTest::run(const std::vector<std::string>& arguments) const {
    vemoapp::RunResult result = scratch.run(arguments);
    EXPECT_TRUE(fs::is_empty(scratch.path("tmp")));
    return result;
}

rapidjson::Document InspectTest::answer(std::vector<std::string> arguments,
                                        const std::string& schema, int status) const {
    arguments.insert(arguments.begin() + 1, "--json");
    const vemoapp::RunResult result = run(arguments);
    EXPECT_EQ(result.status, status) << result.errors;
    EXPECT_EQ(misfit(schema, result.output), "") << result.output;
    return parsed(result.output);
}

std::string InspectTest::programWith(const std::string& systemConfig) const {
    fs::create_directories(scratch.path("bin"));
    scratch.write("bin/vemo.json", systemConfig);
    return scratch.path("bin/vemocad");
}

std::string InspectTest::builtProgram() {
    return (vemoapp::VemocadRun::builtApplication() / "vemocad").string();
}
