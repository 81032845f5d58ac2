#pragma once

#include "formats/TimeStamp.h"

#include <cstdint>
#include <optional>

namespace usage {

/// A price per token in picodollars (a millionth of the usual dollars per million tokens), if it is
/// known.
struct Rate {
    std::optional<std::int64_t> picodollars;
    bool isAssumed = false; // nobody stated it
};

struct Rates {
    Rate input;
    Rate output;
    Rate shortWrite; // cache writes for five minutes, or the shortest time there is
    Rate longWrite;  // and for an hour, or longer
    Rate read;       // from the cache
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

} // namespace usage
