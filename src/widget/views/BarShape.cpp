#include "widget/views/BarShape.h"

#include "widget/views/theme/Metrics.h"
#include <algorithm>
#include <cmath>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double cornerRadius = 3.5;
constexpr double seam = 1;
/// A lower piece has no seam to its neighbours: nothing of it would be left.
constexpr double leastSeamed = 3;

/// On the border between two pixels of a device with this many of them to a point.
double snapped(double length, double scale)
{
    return std::round(length * scale) / scale;
}

QPainterPath rounded(const QRectF &box)
{
    const double radius = std::min({cornerRadius, box.width() / 2, box.height() / 2});
    QPainterPath path;
    path.addRoundedRect(box, radius, radius);
    return path;
}

} // namespace

void BarShape::setColumn(const ChartColumn &column)
{
    if (column == m_column) {
        return;
    }
    m_column = column;
    // It stands in an item at the bar's own place; in the chart its box has whole points.
    setX(std::floor(column.x) - column.x);
    setSize(QSizeF(std::ceil(column.width) + 1, Metrics::areaHeight()));
    Q_EMIT columnChanged();
    update();
}

void BarShape::setGrowth(double growth)
{
    if (growth == m_growth) {
        return;
    }
    m_growth = growth;
    Q_EMIT growthChanged();
    update();
}

void BarShape::draw(QPainter &painter) const
{
    const double scale = painter.deviceTransform().m11();
    const double top = snapped(height() - m_column.height * m_growth, scale);
    const QRectF box(snapped(-x(), scale), top, snapped(m_column.width, scale), height() - top);
    const QPainterPath outline = rounded(box);
    double bottom = box.bottom();
    double share = 0;
    bool seamed = false;
    for (const BarPart &part : m_column.parts) {
        share += part.share;
        const bool last = &part == &m_column.parts.constLast();
        const double end = last ? top : snapped(box.bottom() - share * box.height(), scale);
        const bool high = bottom - end >= leastSeamed;
        const double begin = high && seamed ? bottom - seam : bottom;
        QPainterPath piece;
        piece.addRect(box.left(), end, box.width(), begin - end);
        painter.fillPath(outline.intersected(piece), part.shade);
        bottom = end;
        seamed = high;
    }
}

#include "moc_BarShape.cpp"
