#pragma once

#include "sources/CodexLimits.h"
#include "sources/StatsLoad.h"

/// Made-up figures around one fixed moment, so that whatever is drawn or measured is always the
/// same.
namespace Canned {

/// How much history there is.
struct Extent {
    int days = 420;   ///< with a day's bar each; weeks and months are their sums
    int sessions = 9; ///< of Claude; Codex has a fifth of them, at least two
};

/// Friday, 21 November 2025, 15:59 in Berlin.
[[nodiscard]] TimePoint now();

[[nodiscard]] ParsedStats statistics(const Extent &extent = {});
/// Titles that no layout likes: right to left, overlong, of emoji, of line breaks, empty.
[[nodiscard]] ParsedStats awkwardSessions();

/// Two minutes old, 68% and 31% used, each moving at its own pace.
[[nodiscard]] Limits limits();
/// The same with these percentages used.
[[nodiscard]] Limits limits(double fiveHours, double sevenDays);
/// Both windows have ended since the reading was taken.
[[nodiscard]] Limits endedLimits();
/// Windows of a day and of thirty days, which have no names.
[[nodiscard]] CodexLimits codexLimits();

} // namespace Canned
