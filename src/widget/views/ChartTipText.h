#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// What is told of the bar under the pointer, and where.
class ChartTipText final {
    Q_GADGET
    QML_VALUE_TYPE(chartTipText)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString cost MEMBER cost)
    Q_PROPERTY(QString tokens MEMBER tokens)
    Q_PROPERTY(QString spoken MEMBER spoken)
    Q_PROPERTY(double x MEMBER x)
    Q_PROPERTY(double y MEMBER y)
    Q_PROPERTY(double clearance MEMBER clearance)

public:
    QString title;        ///< which period
    QString cost;         ///< its money
    QString tokens;       ///< its tokens
    QString spoken;       ///< all three for a screen reader
    double x = 0;         ///< the bar's centre, where the tip's leading edge is
    double y = 0;         ///< the bar's top, where the tip's top edge is
    double clearance = 0; ///< how much of the tip stays transparent to leave the bar in sight

    bool operator==(const ChartTipText &) const = default;
};
