#pragma once

#include "usage/codex/RolloutLine.h"
#include "usage/limits/LimitReading.h"

namespace usage {

/// What a line tells; nothing where that is no window of which the length is known.
[[nodiscard]] std::optional<LimitReading> limitReading(const RolloutLimits &limits, TimePoint time);

} // namespace usage
