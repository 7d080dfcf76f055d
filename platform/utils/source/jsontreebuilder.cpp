#include "jsontreebuilder.h"

#include <rapidjson/error/en.h>

#include "elementaccess.h"
#include "jsonnumber.h"
#include "utf8check.h"

using rapidjson::GetParseError_En;

VoJsonPtr JsonTreeBuilder::root() const {
    return pending.empty() ? nullptr : pending.front().node;
}

bool JsonTreeBuilder::Null() {
    return add(nodes.make<std::monostate>(kElementNull | kElementNoValue));
}

bool JsonTreeBuilder::Bool(bool boolean) {
    return add(nodes.make<bool>(kElementBoolean, boolean));
}

bool JsonTreeBuilder::RawNumber(const char* text, unsigned length, bool /*copy*/) {
    const JsonNumber number = jsonNumber({text, length});
    if (const auto* integer = std::get_if<std::int64_t>(&number)) {
        return add(nodes.make<std::int64_t>(kElementInteger, *integer));
    }
    if (const auto* unsignedInteger = std::get_if<std::uint64_t>(&number)) {
        return add(nodes.make<std::uint64_t>(kElementUnsigned, *unsignedInteger));
    }
    if (const auto* real = std::get_if<double>(&number)) {
        return add(nodes.make<double>(kElementReal, *real));
    }
    return refuse(GetParseError_En(rapidjson::kParseErrorNumberTooBig));
}

bool JsonTreeBuilder::String(const char* text, unsigned length, bool /*copy*/) {
    return isText({text, length}) && add(nodes.make<std::string>(kElementText, text, length));
}

bool JsonTreeBuilder::Key(const char* text, unsigned length, bool /*copy*/) {
    const std::string_view key(text, length);
    pending.emplace_back(key, nullptr);
    return isText(key);
}

bool JsonTreeBuilder::StartObject() {
    return open(nodes.make<MemberTable>(kElementObject));
}

bool JsonTreeBuilder::EndObject(unsigned count) {
    const std::size_t first = pending.size() - count;
    auto& object = static_cast<ElementValue&>(*pending[first - 1].node.get());
    auto& members = *ElementAccess::held<MemberTable>(object);
    members.reserve(count);
    for (std::size_t at = first; at < pending.size(); ++at) {
        members.set(pending[at].key, std::move(pending[at].node));
    }
    pending.erase(pending.begin() + static_cast<std::ptrdiff_t>(first), pending.end());
    --depth;
    return true;
}

bool JsonTreeBuilder::StartArray() {
    return open(nodes.make<ElementAccess::Items>(kElementArray));
}

bool JsonTreeBuilder::EndArray(unsigned count) {
    const std::size_t first = pending.size() - count;
    auto& array = static_cast<ElementValue&>(*pending[first - 1].node.get());
    auto& items = *ElementAccess::held<ElementAccess::Items>(array);
    items.reserve(count);
    for (std::size_t at = first; at < pending.size(); ++at) {
        items.push_back(std::move(pending[at].node));
    }
    pending.erase(pending.begin() + static_cast<std::ptrdiff_t>(first), pending.end());
    --depth;
    return true;
}

bool JsonTreeBuilder::add(VoJsonPtr node) {
    if (!pending.empty() && !pending.back().node) {
        pending.back().node = std::move(node);
    } else {
        pending.emplace_back(std::string_view(), std::move(node));
    }
    return true;
}

bool JsonTreeBuilder::open(VoJsonPtr container) {
    if (++depth > IElementValueBase::kMaxDepth) {
        return refuse("Nested too deeply.");
    }
    return add(std::move(container));
}

bool JsonTreeBuilder::isText(std::string_view text) {
    return !checksTexts || isUtf8(text) ||
           refuse(GetParseError_En(rapidjson::kParseErrorStringUnicodeSurrogateInvalid));
}

bool JsonTreeBuilder::refuse(const char* why) {
    reason = why;
    return false;
}
