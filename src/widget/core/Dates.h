#pragma once

#include "formats/TimePoint.h"
#include <optional>
#include <QString>

/// The one calendar: Gregorian, in the local time zone. All day and month arithmetic goes through
/// it.
namespace Dates {

/// Local midnight of a day written year-month-day, such as 2026-03-05. Pieces between the dashes
/// that are empty or no decimal integers are left out; exactly three must remain and form a date.
[[nodiscard]] std::optional<TimePoint> day(const std::optional<QString> &text);

/// Local midnight of the first day of a month written year-month, such as 2026-03, read like `day`.
[[nodiscard]] std::optional<TimePoint> month(const std::optional<QString> &text);

/// Local midnight of the first day of the month that holds `now`; `now` itself where the calendar
/// cannot form it.
[[nodiscard]] TimePoint startOfCurrentMonth(TimePoint now);

/// Local midnight of the day that lies this many calendar months before the one that holds
/// `moment`; `moment` itself where the calendar cannot form it.
[[nodiscard]] TimePoint monthsBefore(TimePoint moment, int months);

/// How many calendar days `moment` lies before `now`: 0 today, 1 yesterday, negative in the future.
[[nodiscard]] qint64 daysAgo(TimePoint moment, TimePoint now);

} // namespace Dates
