#include "widget/text/Strings.h"

#include <ctime>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

/// The tests run in Berlin: an hour ahead of UTC in winter, two in summer.
TimePoint utc(int y, int m, int d, int h, int min)
{
    return sys_days(year(y) / m / d) + hours(h) + minutes(min);
}

/// A language with a single pattern, under "p".
Strings withPattern(const char *language, const char *culture, const char *pattern)
{
    const QString code = QString::fromLatin1(language);
    const Texts texts {
        {u"culture"_qs, QString::fromUtf8(culture)}, {u"p"_qs, QString::fromUtf8(pattern)}};
    return Strings(code, {{code, texts}});
}

TEST(DatesInStrings, followTheTranslatedPattern)
{
    const struct {
        const char *code, *culture, *pattern, *phrase, *alone = phrase;
    } rows[] = {{"en", "en-US", "ddd HH:mm", "Fri 10:05"},
        {"ru", "ru-RU", "MMMM yyyy", "ноября 2025", "ноябрь 2025"},
        {"ru", "ru-RU", "dddd, 'В' HH:mm", "пятница, в 10:05"},
        {"fr", "fr-FR", "ddd d MMM", "ven 14 nov"},
        // Whatever the culture's own calendar is, years are Gregorian.
        {"th", "th-TH", "yyyy", "2025"},
        // Lower case by the rules of the culture: a Turkish I keeps no dot.
        {"fr", "tr-TR", "'I' yyyy", "ı 2025"},
        // Only dots right behind a letter go, and one of them.
        {"en", "en-US", "'.𝐀. a..' d. 'é. 1. 😀.'", ".𝐀 a. 14. é 1. 😀."},
        // No pattern, a culture that nobody knows.
        {"en", "en-US", "", ""}, {"en", "Köln@x=;=", "d yyyy", "14 2025"}};
    for (const auto &row : rows) {
        const Strings strings = withPattern(row.code, row.culture, row.pattern);
        const auto written = [&](MonthForm form) {
            return strings.date(utc(2025, 11, 14, 9, 5), u"p"_qs, form).toStdString();
        };
        EXPECT_EQ(written(MonthForm::InPhrase), row.phrase) << row.pattern;
        EXPECT_EQ(written(MonthForm::StandAlone), row.alone) << row.pattern;
    }
}

/// What the C library says that clocks here show at the moment.
std::string shownByTheSystem(TimePoint moment)
{
    const std::time_t seconds = floor<std::chrono::seconds>(moment).time_since_epoch().count();
    std::tm local = {};
    char text[32] = {};
    localtime_r(&seconds, &local);
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local)};
}

TEST(DatesInStrings, readTheTimeZoneAsTheSystemDoes)
{
    const QByteArray before = qgetenv("TZ");
    const Strings strings = withPattern("en", "en-US", "yyyy-MM-dd HH:mm");
    for (const char *zone : {"Europe/Berlin", ":America/New_York", "Asia/Kolkata", "",
             ":/etc/localtime", "/usr/share/zoneinfo/Australia/Lord_Howe",
             "CET-1CEST,M3.5.0,M10.5.0/3", "no such zone"}) {
        qputenv("TZ", zone);
        tzset();
        for (const TimePoint moment : {utc(2025, 12, 31, 23, 0), utc(2026, 3, 29, 0, 59),
                 utc(2026, 3, 29, 1, 0), utc(2026, 10, 25, 0, 59), utc(2026, 10, 25, 1, 0),
                 utc(2026, 11, 1, 6, 30), utc(1970, 1, 1, 0, 0) - milliseconds(1)}) {
            const std::string shown = shownByTheSystem(moment);
            const QString written = strings.date(moment, u"p"_qs, MonthForm::InPhrase);
            EXPECT_EQ(written.toStdString(), shown) << zone;
            EXPECT_EQ(strings.time(moment).toStdString(), shown.substr(11)) << zone;
        }
    }
    qputenv("TZ", before);
    tzset();
}

TEST(DatesInStrings, sayOnlyTheTimeOfMomentsOfToday)
{
    const Texts texts {{u"atTime"_qs, u"at {0}"_qs}, {u"weekdayTime"_qs, u"ddd HH:mm"_qs}};
    const Strings strings(u"en"_qs, {{u"en"_qs, texts}});
    const TimePoint early = utc(2026, 11, 20, 23, 1);
    const TimePoint late = utc(2026, 11, 21, 22, 59);
    EXPECT_EQ(strings.when(early, late), u"at 00:01");
    EXPECT_EQ(strings.when(late, early), u"at 23:59");
    EXPECT_EQ(strings.when(late + minutes(2), late), u"Sun 00:01");
    EXPECT_EQ(strings.when(early - minutes(2), early), u"Fri 23:59");
}

} // namespace
