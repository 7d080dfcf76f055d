// The node's own value, read as whatever the caller asks for.
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "elementaccess.h"

namespace {

// The number in another type, at the nearer end of that type's range when it lies outside.
template <class To, class From>
To saturated(From number) {
    using Limits = std::numeric_limits<To>;
    if constexpr (std::is_floating_point_v<To>) {
        return static_cast<To>(number);
    } else if constexpr (std::is_floating_point_v<From>) {
        // The range ends at a power of 2, which a real holds exactly where it rounds the last
        // integer.
        const From end = std::ldexp(From{1}, Limits::digits);
        if (number >= end) {
            return Limits::max();
        }
        if (number < static_cast<From>(Limits::min())) {
            return Limits::min();
        }
        return std::isnan(number) ? To{} : static_cast<To>(number);
    } else {
        return std::in_range<To>(number) ? static_cast<To>(number)
               : number < 0              ? Limits::min()
                                         : Limits::max();
    }
}

template <class To>
To numberIn(const ElementAccess::Value& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return saturated<To>(*integer);
    }
    if (const auto* unsignedInteger = std::get_if<std::uint64_t>(&value)) {
        return saturated<To>(*unsignedInteger);
    }
    const auto* real = std::get_if<double>(&value);
    return real ? saturated<To>(*real) : To{};
}

}  // namespace

OdAnsiString ElementValue::strValue() const {
    const auto* text = std::get_if<std::string>(&value);
    return text ? OdAnsiString(*text) : OdAnsiString();
}

std::int64_t ElementValue::longlongValue() const {
    return numberIn<std::int64_t>(value);
}

std::uint64_t ElementValue::ulonglongValue() const {
    return numberIn<std::uint64_t>(value);
}

bool ElementValue::boolValue() const {
    const auto* boolean = std::get_if<bool>(&value);
    return boolean && *boolean;
}

double ElementValue::floatValue() const {
    return numberIn<double>(value);
}

void* ElementValue::ptrValue() const {
    if (const auto* object = std::get_if<OdRxObjectPtr>(&value)) {
        return object->get();
    }
    const auto* pointer = std::get_if<void*>(&value);
    return pointer ? *pointer : nullptr;
}

std::time_t ElementValue::timeValue() const {
    return numberIn<std::time_t>(value);
}

std::time_t ElementValue::timeValueOr(std::time_t defaultValue) const {
    return (valueType() & kElementNoValue) != 0 ? defaultValue : timeValue();
}

std::time_t ElementValue::timePropertyOr(const OdAnsiString& key, std::time_t defaultValue) const {
    const VoJsonPtr child = getProperty(key);
    return child ? child->timeValueOr(defaultValue) : defaultValue;
}
