#include "widget/text/DateFormatter.h"

#include <algorithm>
#include <QDateTime>

namespace {

/// In the culture's digits, at least `width` of them.
QString number(const QLocale &locale, int value, qsizetype width)
{
    QString text;
    for (const QChar digit : QString::number(value).rightJustified(width, u'0')) {
        text += locale.toString(digit.digitValue());
    }
    return text;
}

QString year(const QLocale &locale, int year, qsizetype width)
{
    constexpr int century = 100;
    return number(locale, width == 2 ? year % century : year, width);
}

/// From one to twelve, as a clock with two halves of the day counts.
int hourOfHalfDay(QTime time)
{
    constexpr int half = 12;
    return (time.hour() + half - 1) % half + 1;
}

/// Counted from the day with which the culture's week begins; that day is 1.
int dayOfWeek(const QLocale &locale, int day)
{
    return (day - locale.firstDayOfWeek() + 7) % 7 + 1;
}

/// How long a name is that a field of so many letters stands for.
QLocale::FormatType nameLength(qsizetype count)
{
    switch (count) {
    case 4:
        return QLocale::LongFormat;
    case 5:
        return QLocale::NarrowFormat;
    default:
        return QLocale::ShortFormat;
    }
}

QString dateField(const DatePart &part, QDate date, const QLocale &locale)
{
    const QLocale::FormatType length = nameLength(part.count);
    const bool named = part.count > 2;
    switch (part.letter) {
    case u'y':
        return year(locale, date.year(), part.count);
    case u'M':
        return named ? locale.monthName(date.month(), length)
                     : number(locale, date.month(), part.count);
    case u'L':
        return named ? locale.standaloneMonthName(date.month(), length)
                     : number(locale, date.month(), part.count);
    case u'd':
        return number(locale, date.day(), part.count);
    case u'E':
        return locale.dayName(date.dayOfWeek(), length);
    default:
        return named ? locale.standaloneDayName(date.dayOfWeek(), length)
                     : number(locale, dayOfWeek(locale, date.dayOfWeek()), 1);
    }
}

QString written(const DatePart &part, const QDateTime &local, const QLocale &locale)
{
    const QTime time = local.time();
    switch (part.letter) {
    case 0:
        return part.text;
    case u'y':
    case u'M':
    case u'L':
    case u'd':
    case u'E':
    case u'c':
        return dateField(part, local.date(), locale);
    case u'a':
        return time.hour() < 12 ? locale.amText() : locale.pmText();
    case u'H':
        return number(locale, time.hour(), part.count);
    case u'h':
        return number(locale, hourOfHalfDay(time), part.count);
    case u'm':
        return number(locale, time.minute(), part.count);
    case u's':
        return number(locale, time.second(), part.count);
    default:
        return QString(part.count, QChar(part.letter));
    }
}

} // namespace

DateFormatter::DateFormatter(const QString &culture, const QString &pattern)
    : m_locale(culture)
    , m_parts(datePattern(pattern))
{
}

QString DateFormatter::operator()(TimePoint moment) const
{
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count());
    QString text;
    for (const DatePart &part : m_parts) {
        text += written(part, local, m_locale);
    }
    return text;
}
