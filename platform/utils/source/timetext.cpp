// Dates and times as texts.
#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>
#include <string_view>

#include "utils/paths.h"

namespace {

namespace chrono = std::chrono;

constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// Takes a text apart from its front; once something else stands there, it has failed.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest(text) {}

    unsigned month() {
        const auto found = std::find(kMonths.begin(), kMonths.end(), rest.substr(0, 3));
        skip(3, found != kMonths.end());
        return static_cast<unsigned>(found - kMonths.begin()) + 1;
    }
    int digits(std::size_t count) {
        int value = 0;
        const char* end = rest.data() + std::min(count, rest.size());
        const bool isDigit = !rest.empty() && rest[0] >= '0' && rest[0] <= '9';
        skip(count, isDigit && std::from_chars(rest.data(), end, value).ptr == rest.data() + count);
        return value;
    }
    void character(char expected) { skip(1, rest.starts_with(expected)); }
    bool startsWith(char character) const { return rest.starts_with(character); }
    bool isDone() const { return good && rest.empty(); }

  private:
    void skip(std::size_t count, bool isThere) {
        good = good && isThere;
        rest.remove_prefix(std::min(count, rest.size()));
    }

    std::string_view rest;
    bool good = true;
};

}  // namespace

// The compiler pads the day with a space: "Jul  5 2021 04:22:04".
std::time_t voutStrToTime(const OdAnsiString& text) {
    Reader reader(text.view());
    const chrono::month month(reader.month());
    reader.character(' ');
    const bool isPadded = reader.startsWith(' ');
    if (isPadded) {
        reader.character(' ');
    }
    const chrono::day day(static_cast<unsigned>(reader.digits(isPadded ? 1 : 2)));
    reader.character(' ');
    const chrono::year_month_day date(chrono::year(reader.digits(4)), month, day);
    reader.character(' ');
    const int hour = reader.digits(2);
    reader.character(':');
    const int minute = reader.digits(2);
    reader.character(':');
    const int second = reader.digits(2);
    if (!reader.isDone() || !date.ok() || hour > 23 || minute > 59 || second > 59) {
        return -1;
    }
    const chrono::sys_seconds moment = chrono::sys_days(date) + chrono::hours(hour) +
                                       chrono::minutes(minute) + chrono::seconds(second);
    // Not through the system's clock, whose nanoseconds end in the year 2262.
    return static_cast<std::time_t>(moment.time_since_epoch().count());
}
