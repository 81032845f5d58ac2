#pragma once

#include "formats/TimePoint.h"
#include "usage/values/Skips.h"

#include <optional>
#include <string_view>

namespace usage {

/// Before this there was nothing to count.
constexpr TimePoint earliestTime =
    std::chrono::sys_days {std::chrono::year {2000} / std::chrono::January / 1};
/// Clocks differ, and so do zones; what lies further ahead is a mistake.
constexpr std::chrono::days timeTolerance {2};

/// When a line was written. Nothing for a line that tells no time, or one that cannot be; that goes
/// into the skips. `again` is when one that lies ahead of `now` would count.
[[nodiscard]] std::optional<TimePoint> timeOf(
    std::string_view timestamp, TimePoint now, Skips &skips, std::optional<TimePoint> &again);

} // namespace usage
