#include "widget/model/SummaryCell.h"

#include "widget/text/Strings.h"

namespace {

SummaryCell cell(const char *key, const std::optional<Totals> &totals, const Strings &strings)
{
    const double cost = totals ? totals->cost.value_or(0) : 0;
    const TokenSet tokens = totals ? totals->tokens.value_or(TokenSet()) : TokenSet();
    SummaryCell made;
    made.label = strings.t(QLatin1String(key));
    made.cost = strings.money(cost);
    made.tokens = Strings::tokens(tokens.spent());
    made.spoken = made.label % u", " % made.cost % u", " % made.tokens % u' '
        % strings.t(QStringLiteral("tokShort"));
    made.amount = cost;
    made.spent = tokens.spent();
    return made;
}

} // namespace

QList<SummaryCell> summaryCells(const Stats &stats, Provider provider, const Strings &strings)
{
    const auto providers = stats.providers.value_or(QMap<QString, ProviderStats>());
    const StatsTotals totals = providers.value(rawValue(provider)).totals.value_or(StatsTotals());
    return {
        cell("today", totals.today, strings),
        cell("thisWeek", totals.week, strings),
        cell("thisMonth", totals.month, strings),
        cell("yesterday", totals.yesterday, strings),
        cell("lastWeek", totals.lastWeek, strings),
        cell("lastMonth", totals.lastMonth, strings),
    };
}

#include "moc_SummaryCell.cpp"
