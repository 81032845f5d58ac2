#include "widget/model/allPoints.h"

#include "widget/core/Dates.h"

namespace {

/// The rows of a tab with the moment each period begins, in the file's order, from the first that
/// cost something.
template <typename DateOf>
QList<RawPoint> dated(const std::optional<PeriodRows> &rows, DateOf dateOf)
{
    QList<RawPoint> points;
    if (!rows) {
        return points;
    }
    points.reserve(rows->size());
    for (qsizetype place = 0; place < rows->size(); ++place) {
        const PeriodRow row = rows->at(place);
        const bool counts = !points.isEmpty() || row.cost.value_or(0) > 0;
        if (const std::optional<TimePoint> date = counts ? dateOf(row) : std::nullopt) {
            points.append({*date, &*rows, place});
        }
    }
    return points;
}

} // namespace

QList<RawPoint> allPoints(const Stats &stats, HistoryTab tab)
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
