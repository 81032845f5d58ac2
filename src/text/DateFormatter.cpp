#include "text/DateFormatter.h"

#include <algorithm>
#include <QDateTime>
#include <unicode/smpdtfmt.h>

namespace {

/// Whether we write the part ourselves: a text, or a field as patterns for people have them.
bool isUsual(const DatePart &part)
{
    switch (part.letter) {
    case 0:
    case u'y':
        return true;
    case u'M':
    case u'L':
    case u'E':
        return part.count <= 4;
    case u'd':
    case u'H':
    case u'm':
    case u's':
        return part.count <= 2;
    default:
        return false;
    }
}

/// With the culture's own digits and at least so many of them.
QString number(const QLocale &locale, int value, qsizetype width)
{
    QString text = QString::number(value).rightJustified(width, u'0');
    const QString zero = locale.zeroDigit();
    if (zero.size() == 1 && zero != u'0') {
        for (QChar &digit : text) {
            digit = QChar(static_cast<char16_t>(zero.front().unicode() + digit.digitValue()));
        }
    }
    return text;
}

QString year(const QLocale &locale, int year, qsizetype width)
{
    constexpr int century = 100;
    return number(locale, width == 2 ? year % century : year, width);
}

/// A month as a number, in short or in full, within a phrase or standing alone.
QString month(const QLocale &locale, int month, const DatePart &part)
{
    if (part.count < 3) {
        return number(locale, month, part.count);
    }
    const auto length = part.count == 3 ? QLocale::ShortFormat : QLocale::LongFormat;
    return part.letter == u'L' ? locale.standaloneMonthName(month, length)
                               : locale.monthName(month, length);
}

QString written(const DatePart &part, const QDateTime &local, const QLocale &locale)
{
    switch (part.letter) {
    case u'y':
        return year(locale, local.date().year(), part.count);
    case u'M':
    case u'L':
        return month(locale, local.date().month(), part);
    case u'E':
        return locale.dayName(
            local.date().dayOfWeek(), part.count < 4 ? QLocale::ShortFormat : QLocale::LongFormat);
    case u'd':
        return number(locale, local.date().day(), part.count);
    case u'H':
        return number(locale, local.time().hour(), part.count);
    case u'm':
        return number(locale, local.time().minute(), part.count);
    case u's':
        return number(locale, local.time().second(), part.count);
    default:
        return part.text;
    }
}

icu::Locale gregorianLocale(const QString &culture)
{
    icu::Locale locale = icu::Locale::createFromName(culture.toLatin1().constData());
    if (locale.isBogus()) {
        locale = icu::Locale::getRoot();
    }
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("calendar", "gregorian", status);
    return locale;
}

/// Nothing for a pattern that cannot be understood.
std::unique_ptr<icu::SimpleDateFormat> unusual(const QString &culture, const QString &pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString notation(
        QStringView(pattern).utf16(), static_cast<int>(pattern.size()));
    auto format =
        std::make_unique<icu::SimpleDateFormat>(notation, gregorianLocale(culture), status);
    if (U_FAILURE(status)) {
        return nullptr;
    }
    format->setTimeZone(*icu::TimeZone::getGMT());
    return format;
}

/// By ICU, which is told a moment at which a clock in Greenwich shows our local time.
///
/// ICU finds the system's time zone in ways of its own and misses some (a TZ that holds a
/// rule or a file name). Taking only the offset from Qt keeps every date in one calendar.
QString written(const icu::SimpleDateFormat &format, const QDateTime &local)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    format.format(static_cast<UDate>(local.toMSecsSinceEpoch()) + 1000.0 * local.offsetFromUtc(),
        text, nullptr, status);
    return U_SUCCESS(status) ? QStringView(text.getBuffer(), text.length()).toString() : QString();
}

} // namespace

DateFormatter::DateFormatter(const QString &culture, const QString &pattern)
    : m_locale(culture)
    , m_parts(datePattern(pattern))
{
    if (!std::ranges::all_of(m_parts, isUsual)) {
        m_parts.clear();
        m_unusual = unusual(culture, pattern);
    }
}

DateFormatter::DateFormatter(DateFormatter &&) noexcept = default;
DateFormatter &DateFormatter::operator=(DateFormatter &&) noexcept = default;
DateFormatter::~DateFormatter() = default;

QString DateFormatter::operator()(TimePoint moment) const
{
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count());
    if (m_unusual) {
        return written(*m_unusual, local);
    }
    QString text;
    for (const DatePart &part : m_parts) {
        text += written(part, local, m_locale);
    }
    return text;
}
