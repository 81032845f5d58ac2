#include "indexer/Moment.h"

#include <algorithm>
#include <fmt/format.h>

namespace indexer {

namespace {

using namespace std::chrono;

/// Takes a text apart from its front; once something did not fit, nothing fits any more.
class Cursor final {
public:
    explicit Cursor(std::string_view text)
        : m_rest(text)
    {
    }

    [[nodiscard]] bool atEnd() const { return m_fits && m_rest.empty(); }
    [[nodiscard]] bool fits() const { return m_fits; }

    bool take(char wanted)
    {
        if (m_rest.empty() || m_rest.front() != wanted) {
            return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }

    void require(char wanted) { m_fits = take(wanted) && m_fits; }

    int number(std::size_t digits)
    {
        int value = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            value = value * 10 + digit();
        }
        return value;
    }

    /// The digits behind the decimal point, cut to milliseconds.
    milliseconds fraction()
    {
        int value = digit() * 100;
        for (int weight = 10; !m_rest.empty() && isDigit(m_rest.front()); weight /= 10) {
            value += digit() * weight;
        }
        return milliseconds {value};
    }

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    int digit()
    {
        if (m_rest.empty() || !isDigit(m_rest.front())) {
            m_fits = false;
            return 0;
        }
        const int value = m_rest.front() - '0';
        m_rest.remove_prefix(1);
        return value;
    }

    std::string_view m_rest;
    bool m_fits = true;
};

std::optional<sys_days> takeDate(Cursor &cursor)
{
    const year y {cursor.number(4)};
    cursor.require('-');
    const month m {static_cast<unsigned>(cursor.number(2))};
    cursor.require('-');
    const day d {static_cast<unsigned>(cursor.number(2))};
    const year_month_day date {y, m, d};
    if (!cursor.fits() || !date.ok()) {
        return std::nullopt;
    }
    return sys_days {date};
}

/// "Z" is no offset, "+02:00" two hours; nothing at all is not a zone.
std::optional<minutes> takeZone(Cursor &cursor)
{
    if (cursor.take('Z')) {
        return minutes {0};
    }
    const bool west = cursor.take('-');
    if (!west) {
        cursor.require('+');
    }
    const int h = cursor.number(2);
    cursor.require(':');
    const int m = cursor.number(2);
    if (!cursor.fits() || h > 23 || m > 59) {
        return std::nullopt;
    }
    const minutes offset = hours {h} + minutes {m};
    return west ? -offset : offset;
}

} // namespace

std::optional<TimePoint> parseMoment(std::string_view text)
{
    Cursor cursor(text);
    const auto date = takeDate(cursor);
    cursor.require('T');
    const int h = cursor.number(2);
    cursor.require(':');
    const int m = cursor.number(2);
    cursor.require(':');
    const int s = cursor.number(2);
    const milliseconds part = cursor.take('.') ? cursor.fraction() : milliseconds {0};
    const auto zone = takeZone(cursor);
    // 60 is a leap second; it counts as the first second of the next minute.
    if (!date || !zone || !cursor.atEnd() || h > 23 || m > 59 || s > 60) {
        return std::nullopt;
    }
    return *date + hours {h} + minutes {m} + seconds {s} + part - *zone;
}

std::optional<TimePoint> momentOfNumber(double number)
{
    constexpr double mostSeconds = 1e11;
    constexpr double mostMilliseconds = 253'402'300'800'000; // the end of the year 9999
    constexpr double perSecond = 1000;
    const double all = number > mostSeconds ? number : number * perSecond;
    return all >= 0 && all < mostMilliseconds
        ? std::optional(TimePoint(milliseconds(static_cast<std::int64_t>(all))))
        : std::nullopt;
}

std::optional<TimePoint> parseDate(std::string_view text)
{
    Cursor cursor(text);
    const auto date = takeDate(cursor);
    return date && cursor.atEnd() ? std::optional<TimePoint>(*date) : std::nullopt;
}

std::string momentText(TimePoint moment)
{
    const auto midnight = floor<days>(moment);
    const year_month_day date {midnight};
    const hh_mm_ss time {moment - midnight};
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        time.hours().count(), time.minutes().count(), time.seconds().count(),
        time.subseconds().count());
}

} // namespace indexer
