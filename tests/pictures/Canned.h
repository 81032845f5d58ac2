#pragma once

#include "formats/CodexLimits.h"
#include "widget/sources/StatsLoad.h"

/// Made-up figures around one fixed moment, so that whatever is drawn or measured is always the
/// same.
namespace Canned {

/// How much history there is.
struct Extent {
    int days = 420;    ///< with a day's bar each, and as many weeks and months as they make
    int sessions = 12; ///< of Claude; Codex has a fifth of them
};

/// Friday, 21 November 2025, 15:59 in Berlin.
[[nodiscard]] TimePoint now();

[[nodiscard]] ParsedStats statistics(const Extent &extent = {});

/// Two minutes old, each window moving at its own pace.
[[nodiscard]] Limits limits(double fiveHours = 68.5, double sevenDays = 31);
/// Windows of a day and of thirty days, which have no names.
[[nodiscard]] CodexLimits codexLimits();

} // namespace Canned
