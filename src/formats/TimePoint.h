#pragma once

#include <chrono>

/// A moment, in milliseconds since 1970 (UTC).
using TimePoint = std::chrono::sys_time<std::chrono::milliseconds>;

/// A length of time that no file's numbers can overflow.
using Seconds = std::chrono::duration<double>;

/// How long it is from one moment to another; negative when `to` is the earlier one.
[[nodiscard]] constexpr Seconds elapsed(TimePoint from, TimePoint to)
{
    // Whatever two moments a file names, their difference in milliseconds could overflow.
    return Seconds(to.time_since_epoch()) - Seconds(from.time_since_epoch());
}
