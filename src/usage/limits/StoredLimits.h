#pragma once

#include "usage/limits/LimitReading.h"
#include "usage/values/Provider.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace usage {

/// How much of an assistant's limits is used, as its file tells.
struct StoredLimits {
    Provider provider = Provider::Claude;
    std::optional<TimePoint> updatedAt;
    std::vector<LimitWindow> windows; // the shorter one first
};

/// Whether a window's percentage still says anything.
enum class LimitAge {
    Live,
    Reset,  // since it was told, the window has begun anew
    Unknown // it is too old, or its time makes no sense
};

/// The limits that DATA/codex-limits.json and CLAUDE/usage-limits.json tell, Claude Code's first. A
/// file that is missing or damaged, and a window without a percentage, tell nothing.
[[nodiscard]] std::vector<StoredLimits> readStoredLimits(
    const std::filesystem::path &data, const std::filesystem::path &claude);

[[nodiscard]] LimitAge ageOf(const StoredLimits &limits, const LimitWindow &window, TimePoint now);

/// Of the live windows, the percentage of the fullest.
[[nodiscard]] std::optional<double> fullestLive(
    const std::vector<StoredLimits> &all, TimePoint now);

} // namespace usage
