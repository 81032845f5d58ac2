#include "widget/core/Dates.h"

#include <charconv>
#include <ctime>
#include <limits>
#include <QDateTime>
#include <QVarLengthArray>
#include <string_view>

namespace {

/// A piece of a date as an integer: ASCII digits, optionally after one plus sign, and nothing else.
/// One too large for any date stays an integer, and no date is formed of it.
std::optional<int> integer(QStringView piece)
{
    if (piece.startsWith(u'+')) {
        piece = piece.mid(1);
    }
    const QByteArray digits = piece.toUtf8();
    int value = 0;
    const char *const end = digits.constData() + digits.size();
    const auto result = std::from_chars(digits.constData(), end, value);
    if (digits.isEmpty() || digits.front() == '-' || result.ec == std::errc::invalid_argument
        || result.ptr != end) {
        return std::nullopt;
    }
    return result.ec == std::errc() ? value : std::numeric_limits<int>::max();
}

QVarLengthArray<int, 4> integers(QStringView text)
{
    QVarLengthArray<int, 4> found;
    for (const QStringView piece : QStringView(text).tokenize(u'-', Qt::SkipEmptyParts)) {
        if (const std::optional<int> value = integer(piece)) {
            found.append(*value);
        }
    }
    return found;
}

/// The C library alone is several times as quick as QDateTime. Nothing where
/// midnight is not clearly the first moment of the day.
std::optional<TimePoint> plainMidnight(const QDate &date)
{
    if (date.year() < 1971 || date.year() > 2037) {
        return std::nullopt;
    }
    std::tm begin {};
    begin.tm_year = date.year() - 1900;
    begin.tm_mon = date.month() - 1;
    begin.tm_mday = date.day();
    begin.tm_isdst = -1;
    const std::time_t seconds = std::mktime(&begin);
    const std::time_t before = seconds - 1;
    std::tm end {};
    const bool isFirst = localtime_r(&before, &end) != nullptr && end.tm_mday != date.day();
    const bool isMidnight = begin.tm_mday == date.day() && begin.tm_hour == 0 && begin.tm_min == 0;
    return isFirst && isMidnight ? std::optional(TimePoint(std::chrono::seconds(seconds)))
                                 : std::nullopt;
}

std::optional<TimePoint> midnight(const QDate &date)
{
    if (!date.isValid()) {
        return std::nullopt;
    }
    if (const std::optional<TimePoint> plain = plainMidnight(date)) {
        return plain;
    }
    const QDateTime start = date.startOfDay();
    if (!start.isValid()) {
        return std::nullopt;
    }
    return TimePoint(std::chrono::milliseconds(start.toMSecsSinceEpoch()));
}

QDate localDate(TimePoint moment)
{
    return QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count()).date();
}

} // namespace

namespace Dates {

std::optional<TimePoint> day(const std::optional<QString> &text)
{
    const auto parts = text ? integers(*text) : QVarLengthArray<int, 4>();
    return parts.size() == 3 ? midnight(QDate(parts[0], parts[1], parts[2])) : std::nullopt;
}

std::optional<TimePoint> month(const std::optional<QString> &text)
{
    const auto parts = text ? integers(*text) : QVarLengthArray<int, 4>();
    return parts.size() == 2 ? midnight(QDate(parts[0], parts[1], 1)) : std::nullopt;
}

TimePoint startOfCurrentMonth(TimePoint now)
{
    const QDate today = localDate(now);
    return midnight(QDate(today.year(), today.month(), 1)).value_or(now);
}

TimePoint monthsBefore(TimePoint moment, int months)
{
    return midnight(localDate(moment).addMonths(-months)).value_or(moment);
}

qint64 daysAgo(TimePoint moment, TimePoint now)
{
    return localDate(moment).daysTo(localDate(now));
}

} // namespace Dates
