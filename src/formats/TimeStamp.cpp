#include "formats/TimeStamp.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace {

using namespace std::chrono;

/// Reads a text from left to right; after the first thing that does not fit, everything fails.
class Cursor final {
public:
    explicit Cursor(std::string_view text)
        : m_rest(text)
    {
    }

    [[nodiscard]] bool isComplete() const { return m_fits && m_rest.empty(); }
    [[nodiscard]] bool fits() const { return m_fits; }
    [[nodiscard]] bool nextIsDigit() const
    {
        return !m_rest.empty() && m_rest.front() >= '0' && m_rest.front() <= '9';
    }

    /// Skips `wanted` if it comes next.
    bool take(char wanted)
    {
        if (!m_rest.starts_with(wanted)) {
            return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }

    void require(char wanted) { m_fits = take(wanted) && m_fits; }

    int number(int digits)
    {
        int value = 0;
        for (int i = 0; i < digits; ++i) {
            value = value * 10 + digit();
        }
        return value;
    }

    int digit()
    {
        if (!nextIsDigit()) {
            m_fits = false;
            return 0;
        }
        const int value = m_rest.front() - '0';
        m_rest.remove_prefix(1);
        return value;
    }

private:
    std::string_view m_rest;
    bool m_fits = true;
};

/// ".123": any number of digits, of which the first three count; nothing is no fraction.
milliseconds takeFraction(Cursor &cursor)
{
    if (!cursor.take('.')) {
        return 0ms;
    }
    int value = cursor.digit() * 100;
    for (int weight = 10; cursor.nextIsDigit(); weight /= 10) {
        value += cursor.digit() * weight;
    }
    return milliseconds(value);
}

/// How far local time is ahead of UTC.
std::optional<minutes> takeZone(Cursor &cursor)
{
    if (cursor.take('Z')) {
        return 0min;
    }
    const bool isBehind = cursor.take('-');
    if (!isBehind) {
        cursor.require('+');
    }
    const hours hour(cursor.number(2));
    cursor.take(':');
    const minutes minute(cursor.number(2));
    if (!cursor.fits() || hour > 23h || minute > 59min) {
        return std::nullopt;
    }
    return isBehind ? -(hour + minute) : hour + minute;
}

std::optional<sys_days> takeDate(Cursor &cursor)
{
    const year y(cursor.number(4));
    cursor.require('-');
    const month m(static_cast<unsigned>(cursor.number(2)));
    cursor.require('-');
    const year_month_day date = y / m / day(static_cast<unsigned>(cursor.number(2)));
    return cursor.fits() && date.ok() ? std::optional(sys_days(date)) : std::nullopt;
}

} // namespace

std::optional<TimePoint> TimeStamp::parse(std::string_view text)
{
    Cursor cursor(text);
    const auto date = takeDate(cursor);
    cursor.require('T');
    const int h = cursor.number(2);
    cursor.require(':');
    const int m = cursor.number(2);
    cursor.require(':');
    const int s = cursor.number(2);
    const milliseconds part = takeFraction(cursor);
    const auto ahead = takeZone(cursor);
    if (!date || !ahead || !cursor.isComplete() || h > 23 || m > 59 || s > 59) {
        return std::nullopt;
    }
    return *date + hours(h) + minutes(m) + seconds(s) + part - *ahead;
}

std::optional<TimePoint> TimeStamp::parseDate(std::string_view text)
{
    Cursor cursor(text);
    const auto date = takeDate(cursor);
    return date && cursor.isComplete() ? std::optional<TimePoint>(*date) : std::nullopt;
}

std::optional<TimePoint> TimeStamp::of(double number)
{
    constexpr double mostSeconds = 100'000'000'000.0;
    const double ms = number > mostSeconds ? number : number * 1000;
    // Beyond this no calendar arithmetic is safe; it is some 200 million years away.
    constexpr double bound = 6.0e18;
    if (!(std::abs(ms) < bound)) {
        return std::nullopt;
    }
    return TimePoint(milliseconds(static_cast<std::int64_t>(std::floor(ms))));
}

std::string TimeStamp::text(TimePoint moment)
{
    const auto midnight = floor<days>(moment);
    const year_month_day date(midnight);
    const hh_mm_ss time(moment - midnight);
    std::array<char, 64> written {};
    const int length = std::snprintf(written.data(), written.size(),
        "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
    return {written.data(), static_cast<std::size_t>(length)};
}
