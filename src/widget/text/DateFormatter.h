#pragma once

#include "formats/TimePoint.h"
#include "widget/text/datePattern.h"
#include <QLocale>

/// Writes moments by one pattern in the Unicode notation, with a culture's names and digits.
///
/// The fields are y, M, L, d, E, c, a, H, h, m and s; any other field letter is written as it
/// stands. The calendar is Gregorian, the time zone the local one.
class DateFormatter final {
public:
    /// An unknown culture writes in English.
    DateFormatter(const QString &culture, const QString &pattern);

    /// The moment's text; empty for an empty pattern.
    [[nodiscard]] QString operator()(TimePoint moment) const;

private:
    QLocale m_locale;
    QList<DatePart> m_parts;
};
