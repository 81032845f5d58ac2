#pragma once

#include "widget/views/ChartColumn.h"
#include "widget/views/DrawnItem.h"

/// Draws one bar into a box of whole pixels around its place in the plot.
class BarShape : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(ChartColumn column READ column WRITE setColumn NOTIFY columnChanged REQUIRED)
    Q_PROPERTY(double growth READ growth WRITE setGrowth NOTIFY growthChanged)

public:
    using DrawnItem::DrawnItem;

    [[nodiscard]] const ChartColumn &column() const { return m_column; }
    void setColumn(const ChartColumn &column);
    /// How much of its height the bar has by now, 0…1.
    [[nodiscard]] double growth() const { return m_growth; }
    void setGrowth(double growth);

    void draw(QPainter &painter) const override;

Q_SIGNALS:
    void columnChanged();
    void growthChanged();

private:
    ChartColumn m_column;
    double m_growth = 1;
};
