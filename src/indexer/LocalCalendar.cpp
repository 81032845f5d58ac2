#include "indexer/LocalCalendar.h"

#include <ctime>
#include <fmt/format.h>

namespace indexer {

namespace {

using namespace std::chrono;

std::tm localTime(sys_seconds moment)
{
    const std::time_t stamp = system_clock::to_time_t(moment);
    std::tm local {};
    localtime_r(&stamp, &local);
    return local;
}

} // namespace

LocalCalendar::LocalCalendar()
{
    tzset();
}

Day LocalCalendar::dayOf(TimePoint moment)
{
    const auto second = floor<seconds>(moment);
    if (second >= m_begin && second < m_end) {
        return m_day;
    }
    const std::tm local = localTime(second);
    const auto intoDay = hours {local.tm_hour} + minutes {local.tm_min} + seconds {local.tm_sec};
    m_day = local_days {year {local.tm_year + 1900} / (local.tm_mon + 1) / local.tm_mday};
    m_begin = second - intoDay;
    m_end = m_begin + days {1};
    // With one offset at both ends there was no clock change in between.
    if (localTime(m_begin).tm_gmtoff != local.tm_gmtoff
        || localTime(m_end - seconds {1}).tm_gmtoff != local.tm_gmtoff) {
        m_end = m_begin;
    }
    return m_day;
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

} // namespace indexer
