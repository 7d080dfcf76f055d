#include "systemvariables.h"

#include <charconv>

#include <app/commandtable.h>
#include <app/services.h>

#include "say.h"
#include "text.h"

namespace vemoapp {

namespace {

constexpr std::int16_t kMetric = 1;

std::int16_t measureInit() {
    int value = kMetric;
    if (VoJsonPtr user = vo_sys_config("User")) {
        user->GetDataI("measureInit", value);
    }
    return static_cast<std::int16_t>(value == 0 ? 0 : kMetric);
}

std::int16_t shortInteger(const std::string& text) {
    std::int16_t value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw OdError(OdUtf8StringToOdString("\"" + text + "\" is no 16-bit integer"));
    }
    return value;
}

}  // namespace

SystemVariables::SystemVariables()
    : values({{"INSUNITSDEFSOURCE", std::int16_t{0}},
              {"INSUNITSDEFTARGET", std::int16_t{0}},
              {"MEASUREINIT", measureInit()}}) {}

std::int16_t& SystemVariables::variable(const OdString& name) {
    auto found = values.find(upperCase(OdStringToUtf8String(name).view()));
    if (found == values.end()) {
        throw OdError_InvalidKey(name);
    }
    return found->second;
}

void SystemVariables::setSysVar(const OdString& name, vosi::VosiSysVarValue& value, int /*mode*/,
                                int /*flags*/) {
    variable(name) = value.shortValue;
}

void SystemVariables::getSysVar(const OdString& name, vosi::VosiSysVarValue& value) {
    value.shortValue = variable(name);
}

void SystemVariables::addCommand() {
    if (auto table = service<CommandTable>(kCommandTableKey)) {
        table->add({"SETVAR", "[name [value]]", "shows or sets system variables",
                    [this](const auto& arguments) { setVarCommand(arguments); }});
    }
}

void SystemVariables::setVarCommand(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        for (const auto& [name, value] : values) {
            say("  " + name + " = " + std::to_string(value));
        }
        return;
    }
    std::int16_t& value = variable(OdUtf8StringToOdString(arguments[0]));
    if (arguments.size() > 1) {
        value = shortInteger(arguments[1]);
    }
    say("  " + upperCase(arguments[0]) + " = " + std::to_string(value));
}

}  // namespace vemoapp
