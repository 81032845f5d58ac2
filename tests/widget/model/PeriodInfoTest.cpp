#include "widget/model/PeriodInfo.h"

#include "widget/model/SummaryCell.h"
#include "widget/text/Strings.h"
#include <gtest/gtest.h>
#include <sstream>

namespace {

Totals span(double cost, double tokens, std::optional<double> sessions = {})
{
    return {cost, TokenSet {tokens, {}, {}, 9e9}, sessions};
}

/// Totals of all providers, and other ones of Claude.
Stats counted()
{
    Stats stats;
    stats.totals = StatsTotals {
        span(1.5, 1000, 2.9), span(2, 0), span(150, 2e6, 1e300), span(4, 0), span(5, 0), {}};
    stats.providers = QMap<QString, ProviderStats> {{u"claude"_qs,
        {StatsTotals {span(1, 1000), span(2, 2000), span(3, 3e6), span(4, 4), span(150, 5), {}}}}};
    return stats;
}

TEST(PeriodInfo, comparesThePeriodsOfTheTabOrSaysWhyThereIsNothingYet)
{
    const Strings english(u"en"_qs, {{u"en"_qs, Texts {{u"periodNote"_qs, u"{0}, {1}, {2}"_qs}}}});
    const auto line = [&english](const std::optional<Stats> &stats, HistoryTab tab, bool noNode) {
        const PeriodInfo info = periodInfo(stats, tab, noNode, english);
        const QStringList texts {info.cost, info.note, info.prevLabel, info.prevCost};
        std::ostringstream made;
        made << qPrintable(texts.join(u'|')) << ' ' << info.amount << ' ' << info.spent << ' '
             << info.prevAmount;
        return made.str();
    };
    const std::string days = "$1.50|today, 1k, 2|yesterday|$2.00 1.5 1000 2";
    EXPECT_EQ(line(counted(), HistoryTab::Days, true), days);
    EXPECT_EQ(line(counted(), HistoryTab::Sessions, true), days);
    EXPECT_EQ(line(counted(), HistoryTab::Weeks, true),
        "$150|thisWeek, 2.0M, 9200000000000000000|lastWeek|$4.00 150 2e+06 4");
    // Where none of the parts was spent, the total counts.
    EXPECT_EQ(line(counted(), HistoryTab::Months, true),
        "$5.00|thisMonth, 9.0B, 0|lastMonth|$0.00 5 9e+09 0");
    EXPECT_EQ(line(Stats(), HistoryTab::Days, true), "$0.00|today, 0, 0|yesterday|$0.00 0 0 0");
    EXPECT_EQ(line({}, HistoryTab::Weeks, true), "…|needNode|| 0 0 0");
    EXPECT_EQ(line({}, HistoryTab::Weeks, false), "…|collecting|| 0 0 0");
}

TEST(SummaryCells, areTheProvidersOwnSixSpans)
{
    QStringList texts;
    for (const SummaryCell &cell :
        summaryCells(counted(), Provider::Claude, Strings(u"en"_qs, {}))) {
        texts << QString(cell.label % u'=' % cell.cost % u'/' % cell.tokens);
    }
    EXPECT_EQ(texts.join(u' '),
        u"today=$1.00/1k thisWeek=$3.00/3.0M thisMonth=$150/5 "
        "yesterday=$2.00/2k lastWeek=$4.00/4 lastMonth=$0.00/0");
}

} // namespace
