#include "core/Dates.h"

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
    const struct {
        const char *text;
        std::optional<TimePoint> asDay;
        std::optional<TimePoint> asMonth;
    } rows[] = {
        {"2026-03-05", utc(2026, 3, 4, 23), std::nullopt},
        {"2026-07-05", utc(2026, 7, 4, 22), std::nullopt},
        {"2026-3-5", utc(2026, 3, 4, 23), std::nullopt},
        {"2026--03-05", utc(2026, 3, 4, 23), std::nullopt},
        {"-2026-03-05-", utc(2026, 3, 4, 23), std::nullopt},
        {"2026-x-03-05", utc(2026, 3, 4, 23), std::nullopt},
        {"2026-03-05x", std::nullopt, utc(2026, 2, 28, 23)},
        {"2026-03- 5", std::nullopt, utc(2026, 2, 28, 23)},
        {"2026-03", std::nullopt, utc(2026, 2, 28, 23)},
        {"2026-02-29", std::nullopt, std::nullopt},
        {"2028-02-29", utc(2028, 2, 28, 23), std::nullopt},
        {"2026-13", std::nullopt, std::nullopt},
        {"2026-03-05-01", std::nullopt, std::nullopt},
        {"99999999999-2026-03-05", std::nullopt, std::nullopt},
        {"99999999999-03-05", std::nullopt, std::nullopt},
        {"٢٠٢٦-2026-03-05", utc(2026, 3, 4, 23), std::nullopt},
        {"", std::nullopt, std::nullopt},
    };
    for (const auto &row : rows) {
        const QString text = QString::fromUtf8(row.text);
        EXPECT_EQ(Dates::day(text), row.asDay) << row.text;
        EXPECT_EQ(Dates::month(text), row.asMonth) << row.text;
    }
    EXPECT_EQ(Dates::day(std::nullopt), std::nullopt);
    EXPECT_EQ(Dates::month(std::nullopt), std::nullopt);
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
}

TEST(Dates, goBackByCalendarMonths)
{
    EXPECT_EQ(Dates::monthsBefore(utc(2026, 3, 31, 22), 1), utc(2026, 2, 28, 23)); // 1 April
    EXPECT_EQ(Dates::monthsBefore(utc(2026, 2, 28, 23), 3), utc(2025, 11, 30, 23));
    EXPECT_EQ(Dates::monthsBefore(utc(2026, 2, 28, 23), 6), utc(2025, 8, 31, 22));
    EXPECT_EQ(Dates::monthsBefore(utc(2026, 3, 31, 12), 1), utc(2026, 2, 27, 23)); // no 31st
    const TimePoint faraway(-6'000'000'000'000'000s);
    EXPECT_LE(Dates::monthsBefore(faraway, 6), faraway);
}

} // namespace
