#include "model/SummaryCell.h"

#include "text/Strings.h"
#include <gtest/gtest.h>

namespace {

std::string shown(const QList<SummaryCell> &cells)
{
    QStringList texts;
    for (const SummaryCell &cell : cells) {
        texts << QString(cell.label % u'=' % cell.cost % u'/' % cell.tokens);
    }
    return texts.join(u' ').toStdString();
}

TEST(SummaryCells, areTheProvidersOwnSixSpans)
{
    const auto span = [](double cost, double tokens) {
        return Totals {.cost = cost, .tokens = TokenSet {.total = tokens}};
    };
    const StatsTotals claude {
        span(1, 1000), span(2, 2000), span(3, 3e6), span(4, 4), span(150, 5), span(6, 1.5e9)};
    Stats stats;
    stats.totals = StatsTotals {.today = span(99, 99)};
    stats.providers = QMap<QString, ProviderStats> {{QStringLiteral("claude"), {claude}}};
    const Strings keys(QStringLiteral("en"), {});

    EXPECT_EQ(shown(summaryCells(stats, Provider::Claude, keys)),
        "today=$1.00/1k thisWeek=$3.00/3.0M thisMonth=$150/5 yesterday=$2.00/2k "
        "lastWeek=$4.00/4 lastMonth=$6.00/1.5B");
    EXPECT_EQ(shown(summaryCells(stats, Provider::Codex, keys)),
        "today=$0.00/0 thisWeek=$0.00/0 thisMonth=$0.00/0 yesterday=$0.00/0 lastWeek=$0.00/0 "
        "lastMonth=$0.00/0");
}

} // namespace
