#include "text/Strings.h"

#include <ctime>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

/// The tests run in Berlin: an hour ahead of UTC in winter, two in summer.
TimePoint utc(int y, int m, int d, int h = 0, int min = 0)
{
    return sys_days(year(y) / m / d) + hours(h) + minutes(min);
}

/// A language with a single pattern, under "p".
Strings withPattern(const char *code, const char *culture, const char *pattern)
{
    const QString language = QString::fromUtf8(code);
    return Strings(language,
        {{language,
            {{u"culture"_qs, QString::fromUtf8(culture)}, {u"p"_qs, QString::fromUtf8(pattern)}}}});
}

std::string inPhrase(const Strings &strings, TimePoint moment)
{
    return strings.date(moment, u"p"_qs, MonthForm::InPhrase).toStdString();
}

std::string standAlone(const Strings &strings, TimePoint moment)
{
    return strings.date(moment, u"p"_qs, MonthForm::StandAlone).toStdString();
}

/// The process in another time zone, as long as this lives.
class InTimeZone final {
public:
    explicit InTimeZone(const char *zone)
        : m_before(qgetenv("TZ"))
    {
        zone != nullptr ? qputenv("TZ", zone) : qunsetenv("TZ");
        tzset();
    }
    InTimeZone(const InTimeZone &) = delete;
    InTimeZone &operator=(const InTimeZone &) = delete;
    ~InTimeZone()
    {
        qputenv("TZ", m_before);
        tzset();
    }

private:
    QByteArray m_before;
};

TEST(DatesInStrings, followTheTranslatedPattern)
{
    const TimePoint friday = utc(2025, 11, 14, 9, 5);
    const struct {
        const char *code;
        const char *culture;
        const char *pattern;
        const char *phrase;
        const char *alone;
    } rows[] = {
        {"en", "en-US", "dddd, d MMMM", "Friday, 14 November", "Friday, 14 November"},
        {"en", "en-US", "ddd HH:mm", "Fri 10:05", "Fri 10:05"},
        {"en", "en-US", "ddd 'at' H:mm", "Fri at 10:05", "Fri at 10:05"},
        {"en", "en-US", "d 'o''clock", "14 o'clock", "14 o'clock"},
        {"en", "en-US", "dd.MM.yy", "14.11.25", "14.11.25"},
        {"en", "en-US", "", "", ""},
        {"de", "de-DE", "ddd, d. MMM", "Fr, 14. Nov", "Fr, 14. Nov"},
        {"de", "de-DE", "d. MMMM yyyy", "14. November 2025", "14. November 2025"},
        {"ru", "ru-RU", "d MMMM", "14 ноября", "14 ноябрь"},
        {"ru", "ru-RU", "MMMM yyyy", "ноября 2025", "ноябрь 2025"},
        {"ru", "ru-RU", "MMM", "нояб", "нояб"},
        {"ru", "ru-RU", "dddd, 'В' HH:mm", "пятница, в 10:05", "пятница, в 10:05"},
        {"fr", "fr-FR", "ddd d MMM", "ven 14 nov", "ven 14 nov"},
        {"pl", "pl-PL", "MMMM", "listopada", "listopad"},
        {"ko", "ko-KR", "MMMM d일 ddd", "11월 14일 금", "11월 14일 금"},
        // Whatever the culture's own calendar is, years are Gregorian.
        {"th", "th-TH", "yyyy", "2025", "2025"},
        {"fa", "fa-IR-u-nu-latn", "yyyy", "2025", "2025"},
        // Lower case by the rules of the culture: a Turkish I keeps no dot.
        {"fr", "tr-TR", "'I' yyyy", "ı 2025", "ı 2025"},
        {"tr", "tr-TR", "'I' yyyy", "I 2025", "I 2025"},
        // Only dots right behind a letter go, and one of them.
        {"en", "en-US", "'a..' d. 'é. 1. -.'", "a. 14. é 1. -.", "a. 14. é 1. -."},
        {"en", "en-US", "'.𝐀. 😀.'", ".𝐀 😀.", ".𝐀 😀."},
        // A letter that no pattern knows, cultures that nobody knows.
        {"en", "en-US", "d n", "", ""},
        {"en", "xx-Nowhere-1", "d yyyy", "14 2025", "14 2025"},
        {"en", "", "d yyyy", "14 2025", "14 2025"},
        {"en", "Köln@x=;=", "d yyyy", "14 2025", "14 2025"},
    };
    for (const auto &row : rows) {
        const Strings strings = withPattern(row.code, row.culture, row.pattern);
        EXPECT_EQ(inPhrase(strings, friday), row.phrase) << row.code << ' ' << row.pattern;
        EXPECT_EQ(standAlone(strings, friday), row.alone) << row.code << ' ' << row.pattern;
    }
}

TEST(DatesInStrings, areEmptyWithoutAPattern)
{
    EXPECT_EQ(Strings(u"en"_qs, {}).date(utc(2026, 1, 1), u"p"_qs, MonthForm::InPhrase), u"");
}

TEST(DatesInStrings, keepTheirPatternsApart)
{
    const Strings strings = withPattern("ru", "ru-RU", "MMMM");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(inPhrase(strings, utc(2026, 3, 1)), "марта");
        EXPECT_EQ(standAlone(strings, utc(2026, 3, 1)), "март");
        EXPECT_EQ(inPhrase(strings, utc(2026, 5, 1)), "мая");
    }
}

TEST(DatesInStrings, readLocalTimeAcrossYearsAndClockChanges)
{
    const Strings strings = withPattern("en", "en-US", "yyyy-MM-dd HH:mm");
    const struct {
        TimePoint moment;
        const char *text = nullptr;
    } rows[] = {
        {utc(2025, 12, 31, 22, 59), "2025-12-31 23:59"},
        {utc(2025, 12, 31, 23, 0), "2026-01-01 00:00"},
        {utc(2026, 3, 29, 0, 59), "2026-03-29 01:59"},
        {utc(2026, 3, 29, 1, 0), "2026-03-29 03:00"},
        {utc(2026, 10, 25, 0, 59), "2026-10-25 02:59"},
        {utc(2026, 10, 25, 1, 0), "2026-10-25 02:00"},
        {utc(2028, 2, 29, 12, 0), "2028-02-29 13:00"},
        {utc(1969, 12, 31, 23, 59) + milliseconds(59'999), "1970-01-01 00:59"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(inPhrase(strings, row.moment), row.text);
        EXPECT_EQ(strings.time(row.moment).toStdString(), std::string(row.text).substr(11));
    }
    // The ends of what a moment can hold have no sensible date, but do no harm.
    EXPECT_EQ(strings.time(TimePoint::max()).size(), 5);
    EXPECT_EQ(strings.time(TimePoint::min()).size(), 5);
}

TEST(DatesInStrings, readTheTimeZoneAsTheSystemDoes)
{
    for (const char *zone : {"Europe/Berlin", ":America/New_York", "Asia/Kolkata", "UTC", "",
             "Etc/GMT+5", ":/etc/localtime", "/usr/share/zoneinfo/Australia/Lord_Howe",
             "CET-1CEST,M3.5.0,M10.5.0/3", "no such zone", static_cast<const char *>(nullptr)}) {
        const InTimeZone there(zone);
        const Strings strings = withPattern("en", "en-US", "yyyy-MM-dd HH:mm");
        for (const TimePoint moment : {utc(2026, 1, 15, 23, 30), utc(2026, 7, 15, 3, 45),
                 utc(2026, 3, 29, 1), utc(2026, 11, 1, 6, 30), utc(2026, 12, 31, 23, 59)}) {
            const std::time_t seconds = system_clock::to_time_t(moment);
            std::tm local = {};
            char expected[32] = {};
            localtime_r(&seconds, &local);
            ASSERT_NE(std::strftime(expected, sizeof expected, "%Y-%m-%d %H:%M", &local), 0);
            EXPECT_EQ(inPhrase(strings, moment), expected) << (zone != nullptr ? zone : "unset");
        }
    }
}

TEST(DatesInStrings, sayOnlyTheTimeOfMomentsOfToday)
{
    const Strings strings(u"en"_qs,
        {{u"en"_qs, {{u"atTime"_qs, u"at {0}"_qs}, {u"weekdayTime"_qs, u"ddd HH:mm"_qs}}}});
    const struct {
        TimePoint moment;
        TimePoint now;
        const char *text = nullptr;
    } rows[] = {
        {utc(2026, 11, 20, 23, 1), utc(2026, 11, 21, 22, 59), "at 00:01"},
        {utc(2026, 11, 21, 22, 59), utc(2026, 11, 20, 23, 1), "at 23:59"},
        {utc(2026, 11, 21, 23, 1), utc(2026, 11, 21, 22, 59), "Sun 00:01"},
        {utc(2026, 11, 20, 22, 59), utc(2026, 11, 20, 23, 1), "Fri 23:59"},
        {utc(2025, 11, 21, 12, 0), utc(2026, 11, 21, 12, 0), "Fri 13:00"},
        // The day that loses an hour ends after 23.
        {utc(2026, 3, 29, 21, 59), utc(2026, 3, 28, 23, 0), "at 23:59"},
        {utc(2026, 3, 29, 22, 0), utc(2026, 3, 28, 23, 0), "Mon 00:00"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(strings.when(row.moment, row.now).toStdString(), row.text);
    }
    EXPECT_EQ(Strings(u"en"_qs, {}).when(utc(2026, 1, 1), utc(2026, 1, 1)), u"atTime");
}

} // namespace
