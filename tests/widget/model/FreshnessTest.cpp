#include "widget/model/Freshness.h"

#include "widget/text/Strings.h"
#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

TEST(Freshness, tellsTheAgeInWholeUnits)
{
    const Texts texts {{u"minAgo"_qs, u"{0} min"_qs}, {u"hAgo"_qs, u"{0} h"_qs},
        {u"dAgo"_qs, u"{0} d"_qs}, {u"dotTip"_qs, u"read at {0}"_qs}};
    const Strings strings(u"en"_qs, {{u"en"_qs, texts}});
    constexpr TimePoint read = sys_days(2026y / 3 / 5) + 8h + 5min; // 09:05 in Berlin
    const std::tuple<milliseconds, const char *, bool> rows[] = {{-1h, "now", true},
        {59s + 999ms, "now", true}, {60s, "1 min", true}, {899s, "14 min", true},
        {900s, "15 min", false}, {3599s, "59 min", false}, {3600s, "1 h", false},
        {86'399s, "23 h", false}, {86'400s, "1 d", false}, {172'799s, "1 d", false}};
    for (const auto &[age, text, fresh] : rows) {
        const Freshness shown = freshness(Limits {read}, read + age, strings);
        EXPECT_EQ(shown.text.toStdString(), text) << age.count();
        EXPECT_EQ(shown.fresh, fresh) << age.count();
        EXPECT_EQ(shown.tip, u"read at 09:05");
    }
    constexpr TimePoint end(5'999'999'999'999'999s); // as far as a file can name
    const Limits oldest {TimePoint(-end.time_since_epoch())};
    EXPECT_EQ(freshness(oldest, end, strings).text, u"138888888888 d");
    EXPECT_TRUE(freshness(Limits {{}, Reading {1, read}}, read, strings) == Freshness());
}

} // namespace
