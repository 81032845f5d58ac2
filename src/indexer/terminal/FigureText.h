#pragma once

#include "formats/TimeStamp.h"
#include "usage/values/Money.h"

#include <optional>
#include <string>

namespace indexer {

/// "1,234,567"
[[nodiscard]] std::string grouped(std::uint64_t number);

/// "$4.20", or "?" for a cost that is not known.
[[nodiscard]] std::string costText(const std::optional<usage::Money> &cost);

/// "12.4 MB", in powers of 1000.
[[nodiscard]] std::string bytesText(std::uint64_t bytes);

/// A span in its two largest units: "3 d 4 h", "2 h 10 min", "45 min", "less than a minute".
[[nodiscard]] std::string spanText(std::chrono::milliseconds span);

/// The user's local time: "14:05" on the day of `now`, else "Tue 24 Nov 14:05".
[[nodiscard]] std::string clockText(TimePoint moment, TimePoint now);

} // namespace indexer
