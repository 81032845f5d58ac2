#pragma once

#include "widget/model/Bar.h"
#include "widget/model/LegendItem.h"

/// One coloured piece of a bar.
struct BarPart final {
    QColor shade;
    double share = 0; ///< of the bar's height, 0…1

    bool operator==(const BarPart &) const = default;
};

/// The pieces of a bar from the bottom up: the legend's models in its order, above them what the
/// legend does not tell, in a neutral tone. A bar that knows no models is one piece.
[[nodiscard]] QList<BarPart> barParts(const Bar &bar, const QList<LegendItem> &legend);
