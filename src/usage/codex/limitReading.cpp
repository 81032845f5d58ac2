#include "usage/codex/limitReading.h"

#include <algorithm>

namespace usage {

namespace {

std::optional<TimePoint> resetOf(const RolloutWindow &window, TimePoint time)
{
    constexpr double latest = 253'402'300'799; // the last second of the year 9999
    constexpr double thousand = 1000;
    if (window.resetsAt && *window.resetsAt >= 0 && *window.resetsAt <= latest) {
        return TimePoint(
            TimePoint::duration(static_cast<std::int64_t>(*window.resetsAt * thousand)));
    }
    if (window.resetsIn && *window.resetsIn >= 0 && *window.resetsIn <= latest) {
        return time + TimePoint::duration(static_cast<std::int64_t>(*window.resetsIn * thousand));
    }
    return std::nullopt;
}

} // namespace

std::optional<LimitReading> limitReading(const RolloutLimits &limits, TimePoint time)
{
    // Other families of limits are written to the same place.
    if (!limits.id.empty() && limits.id != "codex") {
        return std::nullopt;
    }
    LimitReading reading {.time = time, .plan = std::string(limits.plan), .windows = {}};
    for (const RolloutWindow &window : limits.windows) {
        if (window.percent && *window.percent >= 0 && window.minutes && *window.minutes > 0) {
            reading.windows.push_back({*window.percent, *window.minutes, resetOf(window, time)});
        }
    }
    std::stable_sort(reading.windows.begin(), reading.windows.end(),
        [](const LimitWindow &a, const LimitWindow &b) { return a.minutes < b.minutes; });
    return reading.windows.empty() ? std::nullopt : std::optional(std::move(reading));
}

} // namespace usage
