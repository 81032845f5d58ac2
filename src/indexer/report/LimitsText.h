#pragma once

#include "indexer/terminal/Terminal.h"
#include "usage/limits/StoredLimits.h"

namespace indexer {

/// From which percentage on a limit is nearly used up, and from which it needs an eye on it.
constexpr double criticalPercent = 85;
constexpr double warningPercent = 60;

/// "5 hours", "week", "30 hours", "30 days"
[[nodiscard]] std::string windowName(const usage::LimitWindow &window);

/// What a window's percentage is worth: "resets in 2 h 10 min (14:05)", "has begun anew since …".
[[nodiscard]] std::string windowNote(
    const usage::StoredLimits &limits, const usage::LimitWindow &window, TimePoint now);

/// How old a reading is, empty while it is fresh.
[[nodiscard]] std::string ageNote(const usage::StoredLimits &limits, TimePoint now);

/// The limits as lines for people, empty when there are none.
[[nodiscard]] std::string limitsText(
    const std::vector<usage::StoredLimits> &all, TimePoint now, const Terminal &terminal);

} // namespace indexer
