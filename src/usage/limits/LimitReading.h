#pragma once

#include "formats/TimeStamp.h"

#include <compare>
#include <optional>
#include <string>
#include <vector>

namespace usage {

/// A window of a usage limit whose length is known.
struct LimitWindow {
    double percent = 0;
    double minutes = 0;
    std::optional<TimePoint> resetsAt;

    [[nodiscard]] auto operator<=>(const LimitWindow &) const = default;
};

/// How much of the user's limits was used at one moment; a later one is greater.
struct LimitReading {
    TimePoint time {};
    std::string plan;                 // empty when it is not told
    std::vector<LimitWindow> windows; // one or two, the shorter one first

    [[nodiscard]] auto operator<=>(const LimitReading &) const = default;
};

/// A reading may lie this much ahead of our clock; beyond it some clock went wrong.
constexpr std::chrono::minutes limitsTolerance {5};

} // namespace usage
