#pragma once

#include "indexer/Moment.h"
#include "indexer/RolloutLine.h"
#include "indexer/TextPool.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace indexer {

/// With what a response was ordered.
struct RolloutSettings {
    TextId model = 0;
    TextId folder = 0; // the working directory
    Speed speed = Speed::Standard;
    ServiceTier tier = ServiceTier::Standard;
};

/// What a thread had used so far, at one moment.
struct RolloutCounter {
    RolloutUsage total;
    RolloutUsage last; // of the last response
    RolloutSettings settings;
    TimePoint time {};
};

/// What one response used.
struct RolloutRecord {
    TextId thread = 0;
    TextId response = 0;
    RolloutUsage usage;
    RolloutSettings settings;
    TimePoint time {};
};

/// A window of a usage limit whose length is known.
struct LimitWindow {
    double percent = 0;
    double minutes = 0;
    std::optional<TimePoint> resetsAt;

    [[nodiscard]] bool operator==(const LimitWindow &) const = default;
};

/// How much of the user's limits was used at one moment.
struct LimitReading {
    TimePoint time {};
    std::vector<LimitWindow> windows; // one or two, the shorter one first
    std::string plan;                 // empty when it is not told
};

/// What one file tells of its thread, with what it copied from the threads it comes from.
struct Rollout {
    TextId thread = 0;
    std::vector<RolloutCounter> counters; // each other than the one before it
    /// How many counters there were before the first response with a record of its own.
    std::optional<std::size_t> countersBeforeRecords;
    std::optional<LimitReading> limits; // the last ones
    std::size_t countersAtLimits = 0;
    bool hasOwnRecordAtLimits = false;
};

} // namespace indexer
