#pragma once

#include "indexer/LocalCalendar.h"
#include "indexer/Skips.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace indexer {

/// What is stored of the past.
struct HistoryFacts {
    std::filesystem::path file;
    std::uint64_t bytes = 0;  // that it takes on the disk
    std::optional<Day> since; // of the oldest answer
    std::uint64_t answers = 0;
    std::uint64_t sessions = 0;
    std::uint64_t files = 0;         // transcripts that were ever read
    std::uint64_t vanishedFiles = 0; // of these, those that are gone but still counted
    std::optional<TimePoint> lastRun;
    Skips skips;
};

} // namespace indexer
