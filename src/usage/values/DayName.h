#pragma once

#include "usage/values/LocalCalendar.h"

#include <optional>
#include <string_view>

namespace usage {

/// Reads a day as a user names it: "2026-11-20", "today", "yesterday", or "7d" for the first of the
/// last seven days, of which today is one.
[[nodiscard]] std::optional<Day> parseDayName(std::string_view name, Day today);

} // namespace usage
