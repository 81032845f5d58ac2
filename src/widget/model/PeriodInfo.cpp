#include "widget/model/PeriodInfo.h"

#include "widget/model/wholeNumber.h"
#include "widget/text/Strings.h"

namespace {

/// The two periods that a tab compares, and the keys of their names.
struct Compared {
    Totals current;
    Totals previous;
    const char *currentKey = nullptr;
    const char *previousKey = nullptr;
};

Compared compared(const StatsTotals &totals, HistoryTab tab)
{
    const auto told = [](const std::optional<Totals> &span) { return span.value_or(Totals()); };
    switch (tab) {
    case HistoryTab::Months:
        return {told(totals.month), told(totals.lastMonth), "thisMonth", "lastMonth"};
    case HistoryTab::Weeks:
        return {told(totals.week), told(totals.lastWeek), "thisWeek", "lastWeek"};
    case HistoryTab::Days:
    case HistoryTab::Sessions:
        break;
    }
    return {told(totals.today), told(totals.yesterday), "today", "yesterday"};
}

PeriodInfo nothingYet(bool noNode, const Strings &strings)
{
    PeriodInfo info;
    info.cost = QStringLiteral("…");
    info.note = strings.t(noNode ? QStringLiteral("needNode") : QStringLiteral("collecting"));
    return info;
}

} // namespace

PeriodInfo periodInfo(
    const std::optional<Stats> &stats, HistoryTab tab, bool noNode, const Strings &strings)
{
    if (!stats) {
        return nothingYet(noNode, strings);
    }
    const Compared periods = compared(stats->totals.value_or(StatsTotals()), tab);
    PeriodInfo info;
    info.amount = periods.current.cost.value_or(0);
    info.prevAmount = periods.previous.cost.value_or(0);
    info.cost = strings.money(info.amount);
    info.prevCost = strings.money(info.prevAmount);
    info.spent = periods.current.tokens.value_or(TokenSet()).spent();
    info.prevLabel = strings.t(QLatin1String(periods.previousKey));
    info.note = strings.t(QStringLiteral("periodNote"),
        {strings.t(QLatin1String(periods.currentKey)), Strings::tokens(info.spent),
            wholeNumber(periods.current.sessions.value_or(0))});
    return info;
}

#include "moc_PeriodInfo.cpp"
