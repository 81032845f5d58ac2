#pragma once

#include "usage/codex/RolloutLine.h"
#include "usage/limits/LimitReading.h"

namespace indexer {

/// What a line tells; nothing where that is no window of which the length is known.
[[nodiscard]] std::optional<LimitReading> limitReading(const RolloutLimits &limits, TimePoint time);

} // namespace indexer
