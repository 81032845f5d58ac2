#pragma once

#include "indexer/Moment.h"

#include <cstdint>
#include <optional>

namespace indexer {

/// Prices per token, in picodollars (a millionth of the usual dollars per million tokens).
struct Rates {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t shortWrite = 0; // cache writes for five minutes
    std::int64_t longWrite = 0;  // and for an hour
    std::int64_t read = 0;       // from the cache
};

/// Rates that hold for the whole request once its prompt is longer than a limit.
struct LongPrompt {
    std::uint64_t above = 0; // tokens
    Rates rates;
};

/// A line of a price list and the moment from which it holds.
struct PriceRow {
    TimePoint validFrom = TimePoint::min();
    Rates rates;
    std::optional<LongPrompt> longPrompt;
};

} // namespace indexer
