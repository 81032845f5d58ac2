#include "model/Freshness.h"

#include "text/Strings.h"
#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

TEST(Freshness, tellsTheAgeInWholeUnits)
{
    const Texts texts {{u"minAgo"_qs, u"{0} min"_qs}, {u"hAgo"_qs, u"{0} h"_qs},
        {u"dAgo"_qs, u"{0} d"_qs}, {u"dotTip"_qs, u"read at {0}"_qs}};
    const Strings strings(u"en"_qs, {{u"en"_qs, texts}});
    constexpr TimePoint read = sys_days(2026y / 3 / 5) + 8h + 5min; // 09:05 in Berlin
    const struct {
        milliseconds age;
        const char *text;
        bool fresh;
    } rows[] = {{-1h, "now", true}, {0s, "now", true}, {59s + 999ms, "now", true},
        {60s, "1 min", true}, {119s, "1 min", true}, {899s, "14 min", true},
        {900s, "15 min", false}, {3599s, "59 min", false}, {3600s, "1 h", false},
        {7199s, "1 h", false}, {86'399s, "23 h", false}, {86'400s, "1 d", false},
        {172'799s, "1 d", false}};
    for (const auto &row : rows) {
        const Freshness shown = freshness(Limits {read}, read + row.age, strings);
        EXPECT_EQ(shown.text.toStdString(), row.text) << row.age.count();
        EXPECT_EQ(shown.fresh, row.fresh) << row.age.count();
        EXPECT_EQ(shown.tip, u"read at 09:05");
    }
    // The ends of what a file can name.
    constexpr TimePoint end(5'999'999'999'999'999s);
    const auto far = [&](TimePoint from, TimePoint to) {
        return freshness(Limits {from}, to, strings).text.toStdString();
    };
    EXPECT_EQ(far(end, TimePoint(-end.time_since_epoch())), "now");
    EXPECT_EQ(far(TimePoint(-end.time_since_epoch()), end), "138888888888 d");

    EXPECT_TRUE(freshness(std::nullopt, read, strings) == Freshness());
    EXPECT_TRUE(freshness(Limits {{}, Reading {1, read}}, read, strings) == Freshness());
}

} // namespace
