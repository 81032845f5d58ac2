#pragma once

#include <QColor>
#include <QObject>

/// One of the models that took the largest share of a page's spending.
class LegendItem final {
    Q_GADGET
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QColor shade READ shade)

public:
    qint64 id = 0;     ///< position in the legend, from 0
    QString text;      ///< display name and share, as in "Opus 4.5: 71%"
    quint32 color = 0; ///< 0xRRGGBB
    QString model;     ///< model id, the key of Bar::models

    [[nodiscard]] QColor shade() const { return QColor::fromRgb(color); }

    bool operator==(const LegendItem &) const = default;
};
