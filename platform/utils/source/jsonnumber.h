// Numbers of JSON texts, exactly.
#pragma once

#include <cstdint>
#include <string_view>
#include <variant>

/// Nothing stands for a number beyond the largest real.
using JsonNumber = std::variant<std::monostate, std::int64_t, std::uint64_t, double>;

/// The value of a number in JSON's grammar: an integer where one of 64 bits holds it, else the
/// nearest real. "-0" is a real, the only kind that keeps its sign.
JsonNumber jsonNumber(std::string_view text);
