#include "formats/TimeStamp.h"

#include <gtest/gtest.h>

namespace {

TEST(TimeStamp, readsDateTimesWithAZone)
{
    const std::pair<const char *, std::int64_t> rows[] = {{"2026-03-05T14:07:09Z", 1772719629000},
        {"2026-03-05T14:07:09.1Z", 1772719629100},
        {"2026-03-05T14:07:09.123999999Z", 1772719629123},
        {"2026-03-05T15:07:09+01:00", 1772719629000}, {"2026-03-05T10:37:09.5-0330", 1772719629500},
        {"1969-12-31T23:59:59.999Z", -1}, {"9999-12-31T23:59:59Z", 253402300799000}};
    for (const auto &[text, milliseconds] : rows) {
        EXPECT_EQ(TimeStamp::parse(text), TimePoint(std::chrono::milliseconds(milliseconds)))
            << text;
    }
    for (const char *text : {"2026-03-05T14:07:09", "2026-03-05", "2026-02-30T14:07:09Z",
             "2026-03-05T24:00:00Z", "2026-03-05T14:07:60Z", "2026-03-05T14:07:09.Z",
             "2026-03-05T14:07:09+25:00", "2026-03-05T14:07:09Zulu", " 2026-03-05T14:07:09Z",
             "+026-03-05T14:07:09Z", "2026-03-05T14:07:0٩Z", "yesterday", ""}) {
        EXPECT_FALSE(TimeStamp::parse(text)) << text;
    }
}

TEST(TimeStamp, takesLargeNumbersAsMilliseconds)
{
    const std::pair<double, std::int64_t> rows[] = {{1760000000, 1760000000000},
        {100e9, 100'000'000'000'000}, {100e9 + 1, 100'000'000'001}, {-2.0005, -2001}};
    for (const auto &[number, milliseconds] : rows) {
        EXPECT_EQ(TimeStamp::of(number), TimePoint(std::chrono::milliseconds(milliseconds)));
    }
    EXPECT_FALSE(TimeStamp::of(1e300) || TimeStamp::of(-1e300));
}

TEST(TimeStamp, isWrittenInUtc)
{
    const auto moment = TimeStamp::parse("2026-11-20T23:15:02.4178-01:00");
    EXPECT_EQ(TimeStamp::text(moment.value()), "2026-11-21T00:15:02.417Z");
    EXPECT_EQ(
        TimeStamp::text(TimeStamp::parseDate("2028-02-29").value()), "2028-02-29T00:00:00.000Z");
    EXPECT_FALSE(TimeStamp::parseDate("2026-02-29"));
}

} // namespace
