#include "widget/core/Dates.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

/// The tests run in Berlin: an hour ahead of UTC in winter, two in summer.
TimePoint utc(int y, unsigned m, unsigned d, int h = 0, int min = 0)
{
    return sys_days(year(y) / m / d) + hours(h) + minutes(min);
}

TEST(Dates, readDaysAndMonthsLeniently)
{
    using Start = std::optional<TimePoint>;
    const Start none;
    const Start fifth = utc(2026, 3, 4, 23);
    const Start march = utc(2026, 2, 28, 23);
    const std::tuple<const char *, Start, Start> rows[] = {{"2026-03-05", fifth, none},
        {"2026-3-5", fifth, none}, {"-2026--03-05", fifth, none}, {"2026-x-03-05", fifth, none},
        {"٢٠٢٦-2026-03-05", fifth, none}, {"2026-07-05", utc(2026, 7, 4, 22), none},
        {"2028-02-29", utc(2028, 2, 28, 23), none}, {"2026-02-29", none, none},
        {"2026-03", none, march}, {"2026-03-05x", none, march}, {"2026-03- 5", none, march},
        {"2026-13", none, none}, {"2026-03-05-01", none, none}, {"", none, none},
        {"99999999999-2026-03-05", none, none}, {"99999999999-03-05", none, none}};
    for (const auto &[text, asDay, asMonth] : rows) {
        EXPECT_EQ(Dates::day(QString::fromUtf8(text)), asDay) << text;
        EXPECT_EQ(Dates::month(QString::fromUtf8(text)), asMonth) << text;
    }
}

TEST(Dates, countLocalDaysAcrossClockChanges)
{
    const TimePoint now = utc(2026, 3, 29, 1, 30); // 03:30 of the day that begins an hour short
    EXPECT_EQ(Dates::daysAgo(utc(2026, 3, 28, 23), now), 0);
    EXPECT_EQ(Dates::daysAgo(utc(2026, 3, 28, 22, 59), now), 1);
    EXPECT_EQ(Dates::daysAgo(utc(2026, 3, 29, 21, 59), now), 0);
    EXPECT_EQ(Dates::daysAgo(utc(2026, 3, 29, 22), now), -1);
    EXPECT_EQ(Dates::startOfCurrentMonth(utc(2026, 3, 31, 21, 59)), utc(2026, 2, 28, 23));
    EXPECT_EQ(Dates::startOfCurrentMonth(utc(2026, 3, 31, 22)), utc(2026, 3, 31, 22));
    EXPECT_EQ(Dates::monthsBefore(utc(2026, 3, 31, 22), 1), utc(2026, 2, 28, 23)); // 1 April
    EXPECT_EQ(Dates::monthsBefore(utc(2026, 2, 28, 23), 6), utc(2025, 8, 31, 22));
    EXPECT_EQ(Dates::monthsBefore(utc(2026, 3, 31, 12), 1), utc(2026, 2, 27, 23)); // no 31st
}

} // namespace
