#pragma once

#include "formats/TimeStamp.h"

#include <filesystem>
#include <optional>
#include <string>

namespace usage {

/// What the statistics file tells of the spans around the day that it was written on.
struct StoredTotals {
    TimePoint writtenAt {};
    std::optional<double> today; // dollars; nothing when the cost is not known
    std::optional<double> week;
    std::optional<double> month;
};

/// The statistics file, or why it tells nothing.
struct StoredTotalsLoad {
    std::optional<StoredTotals> totals;
    bool isMissing = false;
    std::string problem; // in words, unless it is missing
};

[[nodiscard]] StoredTotalsLoad readStoredTotals(const std::filesystem::path &statsFile);

} // namespace usage
