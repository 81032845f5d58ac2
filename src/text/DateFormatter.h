#pragma once

#include "core/TimePoint.h"
#include "text/datePattern.h"
#include <memory>
#include <QLocale>
#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class SimpleDateFormat;
U_NAMESPACE_END

/// Writes moments by one pattern in the Unicode notation, with a culture's month and weekday names.
///
/// The calendar is Gregorian, the time zone the local one as all other date arithmetic sees it.
/// Patterns that name the zone itself are not handled: they would say GMT. Expensive to make for a
/// pattern of unusual fields: these are ICU's, whose data take megabytes once they are looked at.
class DateFormatter final {
public:
    /// An unknown culture writes in a language-neutral form.
    DateFormatter(const QString &culture, const QString &pattern);
    DateFormatter(DateFormatter &&) noexcept;
    DateFormatter &operator=(DateFormatter &&) noexcept;
    ~DateFormatter();

    /// The moment's text; empty for an empty pattern and for one that cannot be understood.
    [[nodiscard]] QString operator()(TimePoint moment) const;

private:
    QLocale m_locale;
    QList<DatePart> m_parts;
    std::unique_ptr<icu::SimpleDateFormat> m_unusual;
};
