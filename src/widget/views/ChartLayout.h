#pragma once

#include "widget/model/Bar.h"
#include <optional>
#include <QList>

/// Where the bars of one page stand in the plot, and which of them is meant by a position.
struct ChartLayout final {
    explicit ChartLayout(qsizetype count);

    double gap = 0;  ///< points between two bars
    double slot = 0; ///< width of one bar; 0 without bars

    /// From one bar's left edge to the next one's.
    [[nodiscard]] double cell() const { return slot + gap; }
    [[nodiscard]] double centre(qsizetype index) const;
    /// The bar at a distance from the plot's left edge. The gap after a bar belongs to it, what is
    /// beyond either end to the last bar there; a padding bar is none.
    [[nodiscard]] std::optional<qsizetype> index(
        std::optional<double> x, const QList<Bar> &bars) const;

    /// The cost of a bar of full height.
    [[nodiscard]] static double scale(const QList<Bar> &bars);
    /// How high a bar is drawn; also an empty one can be seen.
    [[nodiscard]] static double height(const Bar &bar, double scale);
    /// Estimates are fainter than what was measured, and a hovered bar dims every other.
    [[nodiscard]] static double opacity(
        const Bar &bar, qsizetype index, std::optional<qsizetype> hovered);
};
