// What the tests of vemo-inspect share: runs of the built program in folders of their own, and its
// answers as JSON that fits the schemas in tools/schemas.
#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "vemocadrun.h"

/// Compact JSON of the value at a pointer such as "/faces/0/typeface", "nothing" where there is
/// none.
std::string at(const rapidjson::Value& answer, const std::string& pointer);

/// The text at a pointer, without quotation marks; "nothing" where there is none.
std::string textAt(const rapidjson::Value& answer, const std::string& pointer);

/// The member of the array at a pointer that has this text under the key; null where there is none.
const rapidjson::Value* entry(const rapidjson::Value& answer, const std::string& pointer,
                              const std::string& key, const std::string& text);

/// What the named schema has against the JSON text; empty when it fits.
std::string misfit(const std::string& schema, const std::string& json);

class InspectTest : public testing::Test {
  protected:
    /// The program must leave nothing in its temporary folder.
    vemoapp::RunResult run(const std::vector<std::string>& arguments) const;

    /// The answer of a run with "--json" behind its first word, checked against the schema and the
    /// exit status.
    rapidjson::Document answer(std::vector<std::string> arguments, const std::string& schema,
                               int status = 0) const;

    /// An executable's path in the scratch folder, with a "vemo.json" beside it.
    std::string programWith(const std::string& systemConfig) const;

    static std::string builtProgram();
    /// The library's test modules.
    static std::string testModules() { return VEMO_TEST_MODULES; }

    vemoapp::VemocadRun scratch{"vemo-inspect"};
};
