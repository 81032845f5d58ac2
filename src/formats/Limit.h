#pragma once

#include "formats/TimePoint.h"

/// How long the two rate-limit windows are where a source does not tell.
namespace Limit {

inline constexpr Seconds fiveHours {18'000};
inline constexpr Seconds week {604'800};

} // namespace Limit
