#pragma once

#include <QColor>
#include <QObject>

/// One of the models that took the largest share of a page's spending.
class LegendItem final {
    Q_GADGET
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QColor color MEMBER color)

public:
    qint64 id = 0; ///< position in the legend, from 0
    QString text;  ///< display name and share, as in "Opus 4.5: 71%"
    QColor color;
    QString model; ///< model id, the key of Bar::models

    bool operator==(const LegendItem &) const = default;
};
