#include "indexer/Moment.h"

#include <gtest/gtest.h>

namespace {

using namespace indexer;

TEST(Moment, isReadStrictly)
{
    const std::pair<const char *, const char *> rows[] = {
        {"2026-11-20T09:15:02.4178999Z", "2026-11-20T09:15:02.417Z"},
        {"2026-11-20T09:15:02.5+02:30", "2026-11-20T06:45:02.500Z"},
        {"2026-11-20T23:15:02-01:00", "2026-11-21T00:15:02.000Z"},
        {"2026-12-31T23:59:60Z", "2027-01-01T00:00:00.000Z"}};
    for (const auto &[text, utc] : rows) {
        EXPECT_EQ(momentText(parseMoment(text).value()), utc) << text;
    }
    for (const char *text : {"2026-11-20T09:15:02", "2026-11-20 09:15:02Z", "2026-11-20T24:00:00Z",
             "2026-02-29T00:00:00Z", "2026-11-20T09:15:02+0100", "2026-11-20T09:15:02Zx",
             "+026-11-20T09:15:02Z", ""}) {
        EXPECT_FALSE(parseMoment(text)) << text;
    }
    EXPECT_EQ(momentText(parseDate("2028-02-29").value()), "2028-02-29T00:00:00.000Z");
    EXPECT_FALSE(parseDate("2028-02-30").has_value());
}

} // namespace
