#include "widget/views/BarPart.h"

#include "widget/views/theme/Palette.h"
#include <algorithm>
#include <cmath>

namespace {

/// Less of a bar than this is no piece of its own: costs are rounded.
constexpr double leastShare = 0.005;

double positive(double cost)
{
    return cost > 0 ? cost : 0;
}

} // namespace

QList<BarPart> barParts(const Bar &bar, const QList<LegendItem> &legend)
{
    if (bar.isEmpty || !(bar.cost > 0)) {
        return {{Palette::emptyBar(), 1}};
    }
    double told = 0;
    for (const double cost : bar.models) {
        told += positive(cost);
    }
    const double whole = std::max(bar.cost, told);
    if (bar.models.isEmpty() || !std::isfinite(whole)) {
        return {{Palette::accent(), 1}};
    }
    QList<BarPart> parts;
    double rest = 1;
    for (const LegendItem &item : legend) {
        const double share = positive(bar.models.value(item.model)) / whole;
        if (share >= leastShare) {
            parts.append({item.color, share});
            rest -= share;
        }
    }
    if (rest >= leastShare) {
        parts.append({Palette::tertiary(), rest});
    }
    return parts;
}
