#pragma once

#include "widget/model/RowState.h"
#include <QColor>
#include <QObject>

/// One row of the limits card with everything ready to be drawn.
class LimitRow final {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString percent MEMBER percent)
    Q_PROPERTY(QColor percentColor MEMBER percentColor)
    Q_PROPERTY(double value MEMBER value)
    Q_PROPERTY(double fill MEMBER fill)
    Q_PROPERTY(QColor fillColor MEMBER fillColor)
    Q_PROPERTY(bool hasPace MEMBER hasPace)
    Q_PROPERTY(double pace MEMBER pace)
    Q_PROPERTY(QString note MEMBER note)
    Q_PROPERTY(QString runout MEMBER runout)
    Q_PROPERTY(QColor runoutColor MEMBER runoutColor)
    Q_PROPERTY(QString spoken MEMBER spoken)

public:
    QString label;   ///< what the window is called
    QString percent; ///< such as "42%"
    QColor percentColor;
    double value = 0; ///< the used percentage: which way changing digits roll
    double fill = 0;  ///< share of the track, 0…1
    QColor fillColor;
    bool hasPace = false;
    double pace = 0; ///< share of the window's time gone by, 0…1
    QString note;
    QString runout; ///< empty when there is nothing to warn of
    QColor runoutColor;
    QString spoken; ///< the whole row in words, for a screen reader

    bool operator==(const LimitRow &) const = default;
};

[[nodiscard]] LimitRow limitRow(const QString &label, const RowState &state);
