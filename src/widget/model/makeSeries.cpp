#include "widget/model/makeSeries.h"

#include "widget/core/Dates.h"
#include "widget/model/wholeNumber.h"
#include "widget/text/modelName.h"
#include "widget/text/Strings.h"
#include "widget/views/theme/Palette.h"
#include <algorithm>
#include <array>
#include <utility>

namespace {

/// How many bars each tab shows at a time.
constexpr std::array<qint64, 4> barsPerPage {14, 14, 12, 0};
/// With fewer months than these, empty bars stand before them.
constexpr qint64 fewestMonths = 6;

constexpr qsizetype longestLegend = 4;
constexpr double leastShare = 1; // percent

Bar paddingBar(TimePoint month, const Strings &strings)
{
    Bar bar;
    bar.label = strings.date(month, QStringLiteral("monthShort"), MonthForm::StandAlone);
    bar.isEmpty = true;
    return bar;
}

void addPadding(QList<Bar> &bars, TimePoint anchor, qint64 missing, const Strings &strings)
{
    for (auto months = static_cast<int>(missing); months >= 1; --months) {
        bars.append(paddingBar(Dates::monthsBefore(anchor, months), strings));
    }
}

void setLabels(Bar &bar, TimePoint date, HistoryTab tab, const Strings &strings)
{
    const auto write = [&](const char *key, MonthForm form) {
        return strings.date(date, QLatin1String(key), form);
    };
    if (tab == HistoryTab::Months) {
        bar.label = write("monthShort", MonthForm::StandAlone);
        bar.longLabel = write("monthLong", MonthForm::StandAlone);
        return;
    }
    bar.label = write("dayShort", MonthForm::InPhrase);
    bar.longLabel = tab == HistoryTab::Weeks ? strings.t(QStringLiteral("weekOf"), {bar.label})
                                             : write("dayLong", MonthForm::InPhrase);
}

Bar pointBar(const RawPoint &point, HistoryTab tab, const Strings &strings)
{
    Bar bar;
    setLabels(bar, point.date, tab, strings);
    const PeriodRow row = point.row();
    bar.cost = row.cost.value_or(0);
    bar.tokens = row.tokens.value_or(TokenSet()).spent();
    bar.estimated = row.estimated.value_or(false);
    for (const auto &[model, cost] : row.models.value_or(QList<ModelCost>())) {
        bar.models.insert(model, cost);
    }
    return bar;
}

/// What each model cost on the page, the costliest first; equal costs by the model's id.
QList<std::pair<QString, double>> costsByModel(const QList<Bar> &bars)
{
    QMap<QString, double> sums;
    for (const Bar &bar : bars) {
        for (auto model = bar.models.cbegin(); model != bar.models.cend(); ++model) {
            sums[model.key()] += *model;
        }
    }
    QList<std::pair<QString, double>> costs;
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum) {
        costs.append({sum.key(), *sum});
    }
    std::ranges::stable_sort(
        costs, std::ranges::greater(), [](const auto &entry) { return entry.second; });
    return costs;
}

QList<LegendItem> makeLegend(const QList<Bar> &bars)
{
    const auto costs = costsByModel(bars);
    double total = 0;
    for (const auto &[model, cost] : costs) {
        total += cost;
    }
    QList<LegendItem> legend;
    if (!(total > 0)) {
        return legend;
    }
    for (const auto &[model, cost] : costs.first(std::min(costs.size(), longestLegend))) {
        const double share = cost * 100 / total;
        if (!(share >= leastShare)) {
            continue;
        }
        LegendItem item;
        item.id = legend.size();
        item.text = modelName(model) % u": " % wholeNumber(share) % u'%';
        item.color = Palette::model(legend.size());
        item.model = model;
        legend.append(item);
    }
    return legend;
}

} // namespace

Series makeSeries(const QList<RawPoint> &points, HistoryTab tab, qint64 offset,
    const Strings &strings, TimePoint now)
{
    const qint64 count = points.size();
    const qint64 width = std::min(barsPerPage.at(static_cast<std::size_t>(tab)), count);
    Series series;
    series.maxOffset = count - width;
    series.offset = std::clamp<qint64>(offset, 0, series.maxOffset);
    const qint64 first = count - series.offset - width;
    if (tab == HistoryTab::Months && width < fewestMonths) {
        const TimePoint anchor =
            width > 0 ? points.at(first).date : Dates::startOfCurrentMonth(now);
        addPadding(series.bars, anchor, fewestMonths - width, strings);
    }
    for (qint64 i = first; i < first + width; ++i) {
        series.bars.append(pointBar(points.at(i), tab, strings));
    }
    for (qsizetype id = 0; id < series.bars.size(); ++id) {
        series.bars[id].id = id;
    }
    series.legend = makeLegend(series.bars);
    return series;
}
