#pragma once

#include "widget/views/BarPart.h"
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// One bar as it is drawn, in points of the plot.
class ChartColumn final {
    Q_GADGET
    QML_VALUE_TYPE(chartColumn)
    Q_PROPERTY(double x MEMBER x)
    Q_PROPERTY(double width MEMBER width)
    Q_PROPERTY(double height MEMBER height)
    Q_PROPERTY(bool padding MEMBER padding)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(bool labelShown MEMBER labelShown)
    Q_PROPERTY(QString spoken MEMBER spoken)

public:
    double x = 0;
    double width = 0;
    double height = 0;
    bool padding = false;    ///< stands for no period
    QString label;           ///< below the bar
    bool labelShown = false; ///< there is room for it
    QString spoken;          ///< all of it for a screen reader; empty for padding
    QList<BarPart> parts;    ///< from the bottom up

    bool operator==(const ChartColumn &) const = default;
};
