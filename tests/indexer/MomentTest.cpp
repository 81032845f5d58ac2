#include "indexer/Moment.h"
#include "indexer/LocalCalendar.h"

#include <gtest/gtest.h>

namespace {

using namespace indexer;

TEST(Moment, isReadStrictly)
{
    const struct {
        const char *text;
        const char *utc; // empty: no moment
    } rows[] = {
        {"2026-11-20T09:15:02.417Z", "2026-11-20T09:15:02.417Z"},
        {"2026-11-20T09:15:02Z", "2026-11-20T09:15:02.000Z"},
        {"2026-11-20T09:15:02.4178999Z", "2026-11-20T09:15:02.417Z"},
        {"2026-11-20T09:15:02.5+02:30", "2026-11-20T06:45:02.500Z"},
        {"2026-11-20T23:15:02-01:00", "2026-11-21T00:15:02.000Z"},
        {"2026-12-31T23:59:60Z", "2027-01-01T00:00:00.000Z"},
        {"2026-11-20T09:15:02", ""},
        {"2026-11-20 09:15:02Z", ""},
        {"2026-11-20T09:15:02.Z", ""},
        {"2026-11-20T09:15Z", ""},
        {"2026-11-20T24:00:00Z", ""},
        {"2026-02-29T00:00:00Z", ""},
        {"2026-11-20T09:15:02+0100", ""},
        {"2026-11-20T09:15:02Zx", ""},
        {"2026-1-20T09:15:02Z", ""},
        {"+026-11-20T09:15:02Z", ""},
        {"1700000000", ""},
        {"", ""},
    };
    for (const auto &row : rows) {
        const auto moment = parseMoment(row.text);
        EXPECT_EQ(moment ? momentText(*moment) : "", row.utc) << row.text;
    }
    EXPECT_EQ(momentText(parseDate("2028-02-29").value()), "2028-02-29T00:00:00.000Z");
    EXPECT_FALSE(parseDate("2028-02-29T00:00:00Z").has_value());
    EXPECT_FALSE(parseDate("2028-02-30").has_value());
}

TEST(LocalCalendar, findsTheDayOfEachMoment)
{
    // Berlin. The calendar remembers a day, so each row is also a change from the one before.
    const struct {
        const char *utc;
        const char *day;
    } rows[] = {
        {"2026-11-19T22:59:59.999Z", "2026-11-19"},
        {"2026-11-19T23:00:00Z", "2026-11-20"},
        {"2026-11-20T22:59:59.999Z", "2026-11-20"},
        {"2026-11-20T23:00:00Z", "2026-11-21"},
        {"2026-11-20T12:00:00Z", "2026-11-20"},
        // The day that is an hour short, and the one after it.
        {"2026-03-28T22:59:59Z", "2026-03-28"},
        {"2026-03-28T23:00:00Z", "2026-03-29"},
        {"2026-03-29T21:59:59Z", "2026-03-29"},
        {"2026-03-29T22:00:00Z", "2026-03-30"},
        {"2026-03-29T21:30:00Z", "2026-03-29"},
        // The day that is an hour longer.
        {"2026-10-24T22:00:00Z", "2026-10-25"},
        {"2026-10-25T22:30:00Z", "2026-10-25"},
        {"2026-10-25T23:00:00Z", "2026-10-26"},
        {"2026-10-24T21:59:59Z", "2026-10-24"},
    };
    LocalCalendar calendar;
    for (const auto &row : rows) {
        EXPECT_EQ(dayText(calendar.dayOf(parseMoment(row.utc).value())), row.day) << row.utc;
    }
}

TEST(LocalCalendar, startsWeeksOnMonday)
{
    using namespace std::chrono;
    const struct {
        year_month_day day;
        const char *week;
        const char *month;
    } rows[] = {
        {2026y / 11 / 21, "2026-11-16", "2026-11"},
        {2026y / 11 / 16, "2026-11-16", "2026-11"},
        {2026y / 11 / 15, "2026-11-09", "2026-11"},
        {2027y / 1 / 1, "2026-12-28", "2027-01"},
        {2028y / 2 / 29, "2028-02-28", "2028-02"},
    };
    for (const auto &row : rows) {
        const Day day = local_days {row.day};
        EXPECT_EQ(dayText(weekOf(day)), row.week);
        EXPECT_EQ(monthText(monthOf(day)), row.month);
    }
}

} // namespace
