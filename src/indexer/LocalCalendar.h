#pragma once

#include "indexer/Moment.h"

namespace indexer {

/// A day of the user's calendar.
using Day = std::chrono::local_days;

/// Tells on which day of the user's time zone a moment falls.
class LocalCalendar final {
public:
    LocalCalendar();

    [[nodiscard]] Day dayOf(TimePoint moment);

private:
    using Seconds = std::chrono::sys_seconds;

    // The last day asked for, from its first second up to the next midnight; empty when a clock
    // change makes that day irregular.
    Day m_day {};
    Seconds m_begin {};
    Seconds m_end {};
};

/// The Monday on or before the day.
[[nodiscard]] Day weekOf(Day day);
/// The first day of the day's month.
[[nodiscard]] Day monthOf(Day day);

/// "2026-11-20"
[[nodiscard]] std::string dayText(Day day);
/// "2026-11"
[[nodiscard]] std::string monthText(Day day);

} // namespace indexer
