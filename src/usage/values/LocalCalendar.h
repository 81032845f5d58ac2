#pragma once

#include "formats/TimeStamp.h"

#include <cstdint>
#include <unordered_map>

namespace usage {

/// A day of the user's calendar.
using Day = std::chrono::local_days;

/// Tells on which day of the user's time zone a moment falls.
class LocalCalendar final {
public:
    LocalCalendar();

    [[nodiscard]] Day dayOf(TimePoint moment);

private:
    // By the quarter of an hour, of which each lies in one day everywhere. The one asked for last
    // is at hand.
    std::unordered_map<std::int64_t, Day> m_days;
    std::int64_t m_quarter = 0;
    Day m_day {};
    bool m_hasDay = false;
};

/// Tells the user's time zone from others, by each change of its clocks up to some time after now.
[[nodiscard]] std::uint64_t calendarHash(TimePoint now);

/// The Monday on or before the day.
[[nodiscard]] Day weekOf(Day day);
/// The first day of the day's month.
[[nodiscard]] Day monthOf(Day day);

/// "2026-11-20"
[[nodiscard]] std::string dayText(Day day);
/// "2026-11"
[[nodiscard]] std::string monthText(Day day);

} // namespace usage
