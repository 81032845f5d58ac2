#include "widget/model/dayAndTime.h"

#include "widget/core/Dates.h"
#include "widget/text/Strings.h"

QString dayAndTime(const Strings &strings, TimePoint moment, TimePoint now)
{
    constexpr qint64 daysOfAWeek = 7;
    const qint64 days = Dates::daysAgo(moment, now);
    const auto titled = [&](const char *key, const char *defaultText) {
        QString text = strings.text(QLatin1String(key), QLatin1String(defaultText));
        return text.replace(QStringLiteral("{0}"), strings.time(moment));
    };
    if (days == 0) {
        return titled("sessionToday", "today {0}");
    }
    if (days == 1) {
        return titled("sessionYesterday", "yesterday {0}");
    }
    const bool thisWeek = days > 1 && days < daysOfAWeek;
    const QString key = thisWeek ? QStringLiteral("weekdayTime") : QStringLiteral("dayTime");
    return strings.date(moment, key, MonthForm::InPhrase);
}
