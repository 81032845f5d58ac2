#include "model/PeriodInfo.h"

#include "text/Strings.h"
#include <gtest/gtest.h>
#include <sstream>

namespace {

Strings english()
{
    return Strings(
        u"en"_qs, {{u"en"_qs, Texts {{u"periodNote"_qs, u"{0} · {1} tok · {2} sessions"_qs}}}});
}

Stats counted()
{
    const auto span = [](double cost, double tokens, std::optional<double> sessions) {
        return Totals {cost, TokenSet {tokens, {}, {}, 9e9}, sessions};
    };
    Stats stats;
    stats.totals = StatsTotals {span(1.5, 1000, 2.9), span(2, 0, 0), span(150, 2e6, 1e300),
        span(4, 0, 0), span(5, 0, {}), std::nullopt};
    stats.providers =
        QMap<QString, ProviderStats> {{u"claude"_qs, {StatsTotals {.today = span(99, 99, 99)}}}};
    return stats;
}

TEST(PeriodInfo, comparesThePeriodsOfTheTab)
{
    Stats untold;
    Stats bare;
    bare.totals = StatsTotals {.today = Totals()};
    constexpr auto days = "$1.50|today · 1k tok · 2 sessions|yesterday|$2.00|1.5|1000|2";
    constexpr auto zeros = "$0.00|today · 0 tok · 0 sessions|yesterday|$0.00|0|0|0";
    const struct {
        Stats stats;
        HistoryTab tab;
        const char *line;
    } rows[] = {{counted(), HistoryTab::Days, days}, {counted(), HistoryTab::Sessions, days},
        {counted(), HistoryTab::Weeks,
            "$150|thisWeek · 2.0M tok · 9200000000000000000 sessions|lastWeek|$4.00|150|2e+06|4"},
        // Where none of the parts was spent, the total counts.
        {counted(), HistoryTab::Months,
            "$5.00|thisMonth · 9.0B tok · 0 sessions|lastMonth|$0.00|5|9e+09|0"},
        {untold, HistoryTab::Days, zeros}, {bare, HistoryTab::Days, zeros}};
    for (const auto &row : rows) {
        const PeriodInfo info = periodInfo(row.stats, row.tab, true, english());
        std::ostringstream line;
        line << qPrintable(info.cost) << '|' << qPrintable(info.note) << '|'
             << qPrintable(info.prevLabel) << '|' << qPrintable(info.prevCost) << '|' << info.amount
             << '|' << info.spent << '|' << info.prevAmount;
        EXPECT_EQ(line.str(), row.line);
    }
}

TEST(PeriodInfo, saysWhyThereIsNothingYet)
{
    PeriodInfo nothing;
    nothing.cost = u"…"_qs;
    nothing.note = u"needNode"_qs;
    EXPECT_TRUE(periodInfo({}, HistoryTab::Weeks, true, english()) == nothing);
    nothing.note = u"collecting"_qs;
    EXPECT_TRUE(periodInfo({}, HistoryTab::Weeks, false, english()) == nothing);
}

} // namespace
