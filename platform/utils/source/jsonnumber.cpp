#include "jsonnumber.h"

#include <algorithm>
#include <charconv>

namespace {

template <class Number>
bool parse(std::string_view text, Number& number) {
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

// The power of 10 in the text; one beyond any number of digits when it is that large itself.
std::int64_t exponentIn(std::string_view text) {
    const bool negative = text.starts_with('-');
    text.remove_prefix(negative || text.starts_with('+') ? 1 : 0);
    std::int64_t exponent = std::int64_t{1} << 62;
    parse(text, exponent);
    return negative ? -exponent : exponent;
}

// Whether a number that isn't 0 lies below 1: its first digit that isn't 0 stands behind the point.
bool isBelowOne(std::string_view text) {
    const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
    const std::string_view digits = text.substr(0, mark);
    const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
    const std::int64_t exponent = mark < text.size() ? exponentIn(text.substr(mark + 1)) : 0;
    return (first < point ? point - first - 1 : point - first) + exponent < 0;
}

}  // namespace

JsonNumber jsonNumber(std::string_view text) {
    const bool negative = text.starts_with('-');
    const char* end = text.data() + text.size();
    std::int64_t integer = 0;
    // Goes to the end of the digits, whether there is room for them or not.
    if (const auto result = std::from_chars(text.data(), end, integer); result.ptr == end) {
        if (result.ec == std::errc() && !(negative && integer == 0)) {
            return integer;
        }
        if (std::uint64_t large = 0; !negative && parse(text, large)) {
            return large;
        }
    }
    if (double real = 0; parse(text, real)) {
        return real;
    }
    // The two ends of the range give the same error; what is nearer to 0 than any real is 0.
    if (isBelowOne(text)) {
        return negative ? -0.0 : 0.0;
    }
    return std::monostate();
}
