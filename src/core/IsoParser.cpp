#include "core/IsoParser.h"

#include <cmath>

namespace {

using namespace std::chrono;

/// Reads a text from left to right; after the first thing that does not fit, everything fails.
class Cursor final {
public:
    explicit Cursor(QStringView text)
        : m_rest(text)
    {
    }

    [[nodiscard]] bool good() const { return m_good; }
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }
    [[nodiscard]] bool nextIs(char16_t c) const { return m_rest.startsWith(QChar(c)); }
    [[nodiscard]] bool nextIsDigit() const { return !atEnd() && isDigit(m_rest.front()); }

    void expect(char16_t c)
    {
        m_good = m_good && nextIs(c);
        m_rest = m_rest.mid(1);
    }

    void require(bool fits) { m_good = m_good && fits; }

    int digits(int count)
    {
        int value = 0;
        for (int i = 0; i < count; ++i) {
            value = value * 10 + digit();
        }
        return value;
    }

    int digit()
    {
        m_good = m_good && nextIsDigit();
        const int value = m_good ? m_rest.front().unicode() - u'0' : 0;
        m_rest = m_rest.mid(1);
        return value;
    }

private:
    [[nodiscard]] static bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

    QStringView m_rest;
    bool m_good = true;
};

/// ".123": any number of digits, of which the first three count.
milliseconds fraction(Cursor &cursor)
{
    if (!cursor.nextIs(u'.')) {
        return 0ms;
    }
    cursor.expect(u'.');
    int value = cursor.digit() * 100;
    for (int scale = 10; cursor.nextIsDigit(); scale /= 10) {
        value += cursor.digit() * scale;
    }
    return milliseconds(value);
}

/// "Z", "+01:00" or "+0100", as the span that local time is ahead of UTC.
minutes zone(Cursor &cursor)
{
    if (cursor.nextIs(u'Z')) {
        cursor.expect(u'Z');
        return 0min;
    }
    const bool behind = cursor.nextIs(u'-');
    cursor.expect(behind ? u'-' : u'+');
    const hours hour(cursor.digits(2));
    if (cursor.nextIs(u':')) {
        cursor.expect(u':');
    }
    const minutes minute(cursor.digits(2));
    cursor.require(hour < 24h && minute < 60min);
    const minutes ahead = hour + minute;
    return behind ? -ahead : ahead;
}

year_month_day date(Cursor &cursor)
{
    const year y(cursor.digits(4));
    cursor.expect(u'-');
    const month m(static_cast<unsigned>(cursor.digits(2)));
    cursor.expect(u'-');
    return y / m / day(static_cast<unsigned>(cursor.digits(2)));
}

std::optional<TimePoint> fromNumber(double n)
{
    constexpr double mostSeconds = 100'000'000'000.0;
    const double ms = n > mostSeconds ? n : n * 1000;
    // Beyond this no calendar arithmetic is safe; it is some 200 million years away.
    constexpr double bound = 6.0e18;
    if (!(std::abs(ms) < bound)) {
        return std::nullopt;
    }
    return TimePoint(milliseconds(static_cast<qint64>(std::floor(ms))));
}

} // namespace

std::optional<TimePoint> IsoParser::operator()(QStringView text) const
{
    Cursor cursor(text);
    const year_month_day day = date(cursor);
    cursor.expect(u'T');
    const int h = cursor.digits(2);
    cursor.expect(u':');
    const int m = cursor.digits(2);
    cursor.expect(u':');
    const int s = cursor.digits(2);
    const milliseconds ms = fraction(cursor);
    const minutes ahead = zone(cursor);
    if (!cursor.good() || !cursor.atEnd() || !day.ok() || h > 23 || m > 59 || s > 59) {
        return std::nullopt;
    }
    return sys_days(day) + hours(h) + minutes(m) + seconds(s) + ms - ahead;
}

std::optional<TimePoint> IsoParser::operator()(const QJsonValue &value) const
{
    if (value.isString()) {
        return operator()(QStringView(value.toString()));
    }
    return value.isDouble() ? fromNumber(value.toDouble()) : std::nullopt;
}

IsoParser isoParser()
{
    return {};
}
