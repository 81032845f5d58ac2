#include "text/DateFormatter.h"

#include <QDateTime>
#include <unicode/smpdtfmt.h>

namespace {

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

/// The moment as ICU counts it, moved so that a clock in Greenwich shows our local time.
///
/// ICU finds the system's time zone in ways of its own and misses some (a TZ that holds a
/// rule or a file name). Taking only the offset from Qt keeps every date in one calendar.
UDate localWallTime(TimePoint moment)
{
    const qint64 milliseconds = moment.time_since_epoch().count();
    const int offset = QDateTime::fromMSecsSinceEpoch(milliseconds).offsetFromUtc();
    return static_cast<UDate>(milliseconds) + 1000.0 * offset;
}

} // namespace

DateFormatter::DateFormatter(const QString &culture, const QString &pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString notation(
        QStringView(pattern).utf16(), static_cast<int>(pattern.size()));
    auto format =
        std::make_unique<icu::SimpleDateFormat>(notation, gregorianLocale(culture), status);
    if (U_SUCCESS(status)) {
        format->setTimeZone(*icu::TimeZone::getGMT());
        m_format = std::move(format);
    }
}

DateFormatter::DateFormatter(DateFormatter &&) noexcept = default;
DateFormatter &DateFormatter::operator=(DateFormatter &&) noexcept = default;
DateFormatter::~DateFormatter() = default;

QString DateFormatter::operator()(TimePoint moment) const
{
    if (!m_format) {
        return {};
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    m_format->format(localWallTime(moment), text, nullptr, status);
    return U_SUCCESS(status) ? QStringView(text.getBuffer(), text.length()).toString() : QString();
}
