#include "usage/values/PlausibleTime.h"

#include "formats/TimeStamp.h"

#include <algorithm>
#include <charconv>

namespace usage {

namespace {

/// Some programs write numbers instead of texts.
std::optional<TimePoint> momentOf(std::string_view timestamp)
{
    double number = 0;
    const char *end = timestamp.data() + timestamp.size();
    const auto [rest, error] = std::from_chars(timestamp.data(), end, number);
    return error == std::errc {} && rest == end ? TimeStamp::of(number)
                                                : TimeStamp::parse(timestamp);
}

} // namespace

std::optional<TimePoint> timeOf(
    std::string_view timestamp, TimePoint now, Skips &skips, std::optional<TimePoint> &again)
{
    const auto time = momentOf(timestamp);
    if (time && *time >= earliestTime && *time <= now + timeTolerance) {
        return time;
    }
    skips.add(LineSkip::ImpossibleTime);
    if (time && *time > now) {
        const TimePoint from = *time - timeTolerance;
        again = std::min(again.value_or(from), from);
    }
    return std::nullopt;
}

} // namespace usage
