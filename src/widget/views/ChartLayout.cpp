#include "widget/views/ChartLayout.h"

#include "widget/views/theme/Metrics.h"
#include <algorithm>
#include <cmath>

namespace {

constexpr qsizetype manyBars = 11;
constexpr double wideGap = 6;
constexpr double narrowGap = 4;

constexpr double smallestScale = 0.01;
constexpr double lowestBar = 3;

constexpr double dimmed = 0.45;
constexpr double faint = 0.25;

} // namespace

ChartLayout::ChartLayout(qsizetype count)
    : gap(count < manyBars ? wideGap : narrowGap)
{
    if (count >= 1) {
        const auto bars = static_cast<double>(count);
        slot = (Metrics::chartWidth() - gap * (bars - 1)) / bars;
    }
}

double ChartLayout::centre(qsizetype index) const
{
    return slot * 0.5 + cell() * static_cast<double>(index);
}

std::optional<qsizetype> ChartLayout::index(std::optional<double> x, const QList<Bar> &bars) const
{
    if (!x || std::isnan(*x)) {
        return {};
    }
    if (bars.isEmpty() || !(cell() > 0)) {
        return {};
    }
    // Limited before it is cut off to an integer, which does not hold every double.
    const double last = static_cast<double>(bars.size()) - 1;
    const auto i = static_cast<qsizetype>(std::clamp(*x / cell(), 0.0, last));
    return bars.at(i).isEmpty ? std::nullopt : std::optional(i);
}

double ChartLayout::scale(const QList<Bar> &bars)
{
    double largest = smallestScale;
    for (const Bar &bar : bars) {
        largest = std::max(largest, bar.cost);
    }
    return largest;
}

double ChartLayout::height(const Bar &bar, double scale)
{
    if (bar.isEmpty || !(bar.cost > 0)) {
        return lowestBar;
    }
    return std::max(lowestBar, bar.cost / scale * Metrics::chartHeight());
}

double ChartLayout::opacity(const Bar &bar, qsizetype index, std::optional<qsizetype> hovered)
{
    if (bar.isEmpty) {
        return 1;
    }
    if (!hovered) {
        return bar.estimated ? dimmed : 1;
    }
    if (index == *hovered) {
        return 1;
    }
    return bar.estimated ? faint : dimmed;
}
