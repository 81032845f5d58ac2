#pragma once

#include "usage/values/LocalCalendar.h"
#include "usage/values/Skips.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace usage {

/// What is stored of the past.
struct HistorySummary {
    std::filesystem::path file;
    std::uint64_t bytes = 0;  // that it takes on the disk
    std::optional<Day> since; // of the oldest answer
    std::uint64_t answers = 0;
    std::uint64_t sessions = 0;
    std::uint64_t files = 0;         // transcripts that were ever read
    std::uint64_t vanishedFiles = 0; // of these, those that are gone but still counted
    std::optional<TimePoint> newestAnswer;
    std::optional<TimePoint> lastRun;
    bool isIncomplete = false; // since a run was broken off, the sums are those of before
    Skips skips;
    std::optional<std::string> problem; // why all this could not be read
};

/// Nothing is changed, and nobody is kept from their work on the history.
[[nodiscard]] HistorySummary readHistorySummary(const std::filesystem::path &file);

/// Looks through the whole file and says what is wrong with it; empty when nothing is.
[[nodiscard]] std::string historyProblem(const std::filesystem::path &file);

} // namespace usage
