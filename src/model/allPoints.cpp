#include "model/allPoints.h"

#include "core/Dates.h"
#include <algorithm>

namespace {

using Rows = std::optional<QList<PeriodRow>>;

/// The rows of a tab with the moment each period begins, in the file's order.
template <typename DateOf> QList<RawPoint> dated(const Rows &rows, DateOf dateOf)
{
    QList<RawPoint> points;
    if (!rows) {
        return points;
    }
    points.reserve(rows->size());
    for (const PeriodRow &row : *rows) {
        if (const std::optional<TimePoint> date = dateOf(row)) {
            points.append({*date, row});
        }
    }
    return points;
}

QList<RawPoint> dated(const Stats &stats, HistoryTab tab)
{
    switch (tab) {
    case HistoryTab::Days:
        return dated(stats.days, [](const PeriodRow &row) { return Dates::day(row.date); });
    case HistoryTab::Weeks:
        return dated(stats.weeks, [](const PeriodRow &row) { return Dates::day(row.start); });
    case HistoryTab::Months:
        return dated(stats.months, [](const PeriodRow &row) { return Dates::month(row.month); });
    case HistoryTab::Sessions:
        break;
    }
    return {};
}

} // namespace

QList<RawPoint> allPoints(const Stats &stats, HistoryTab tab)
{
    QList<RawPoint> points = dated(stats, tab);
    const auto first = std::ranges::find_if(
        points, [](const RawPoint &point) { return point.row.cost.value_or(0) > 0; });
    points.erase(points.begin(), first);
    return points;
}
