#include "usage/values/LocalCalendar.h"

#include "usage/values/HashOf.h"

#include <ctime>
#include <fmt/format.h>

namespace usage {

namespace {

using namespace std::chrono;

std::tm localTime(sys_seconds moment)
{
    const std::time_t stamp = system_clock::to_time_t(moment);
    std::tm local {};
    localtime_r(&stamp, &local);
    return local;
}

/// Seconds ahead of UTC.
long offsetAt(sys_seconds moment)
{
    return localTime(moment).tm_gmtoff;
}

/// The first second at which clocks show what they show at the end of a span, and not at its start.
sys_seconds changeBetween(sys_seconds start, sys_seconds end)
{
    const long after = offsetAt(end);
    while (end - start > seconds {1}) {
        const sys_seconds middle = start + (end - start) / 2;
        (offsetAt(middle) == after ? end : start) = middle;
    }
    return end;
}

} // namespace

LocalCalendar::LocalCalendar()
{
    tzset();
}

Day LocalCalendar::dayOf(TimePoint moment)
{
    using Quarters = duration<std::int64_t, std::ratio<900>>;
    const std::int64_t quarter = floor<Quarters>(moment).time_since_epoch().count();
    if (m_hasDay && quarter == m_quarter) {
        return m_day;
    }
    const auto [known, isNew] = m_days.try_emplace(quarter);
    if (isNew) {
        const std::tm local = localTime(floor<seconds>(moment));
        known->second =
            local_days {year {local.tm_year + 1900} / (local.tm_mon + 1) / local.tm_mday};
    }
    m_quarter = quarter;
    m_day = known->second;
    m_hasDay = true;
    return m_day;
}

std::uint64_t calendarHash(TimePoint now)
{
    tzset();
    const year_month_day today {floor<days>(now)};
    const sys_days end = (today.year() + years {2}) / January / 1;
    sys_seconds before = sys_days {year {2000} / January / 1};
    std::string zone = std::to_string(offsetAt(before));
    // No clock was changed twice within so few days since.
    constexpr days step {6};
    for (sys_seconds at = before + step; at < end; at += step) {
        if (offsetAt(at) != offsetAt(before)) {
            const auto change = changeBetween(before, at).time_since_epoch().count();
            zone += fmt::format(" {} {}", change, offsetAt(at));
        }
        before = at;
    }
    return hashOf(zone);
}

Day weekOf(Day day)
{
    return day - (weekday {day} - Monday);
}

Day monthOf(Day day)
{
    const year_month_day date {day};
    return local_days {date.year() / date.month() / 1};
}

std::string dayText(Day day)
{
    const year_month_day date {day};
    return fmt::format("{:04}-{:02}-{:02}", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
}

std::string monthText(Day day)
{
    const year_month_day date {day};
    return fmt::format(
        "{:04}-{:02}", static_cast<int>(date.year()), static_cast<unsigned>(date.month()));
}

} // namespace usage
