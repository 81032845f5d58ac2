#include "usage/values/DayName.h"

#include <charconv>

namespace usage {

using namespace std::chrono;

namespace {

std::optional<Day> dayBefore(std::string_view count, Day today)
{
    constexpr int most = 36500; // a century
    int number = 0;
    const char *end = count.data() + count.size();
    const auto [stop, error] = std::from_chars(count.data(), end, number);
    if (error != std::errc {} || stop != end || number < 1 || number > most) {
        return std::nullopt;
    }
    return today - days {number - 1};
}

} // namespace

std::optional<Day> parseDayName(std::string_view name, Day today)
{
    if (name == "today") {
        return today;
    }
    if (name == "yesterday") {
        return today - days {1};
    }
    if (name.ends_with('d')) {
        return dayBefore(name.substr(0, name.size() - 1), today);
    }
    const auto date = TimeStamp::parseDate(name);
    return date ? std::optional(Day {floor<days>(*date).time_since_epoch()}) : std::nullopt;
}

} // namespace usage
