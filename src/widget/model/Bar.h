#pragma once

#include <QMap>
#include <QString>

/// One bar of the history chart: what one period cost.
struct Bar {
    qint64 id = 0;                ///< position on the page, from 0, the oldest
    QString label;                ///< stands under the bar
    QString longLabel;            ///< stands in the tip; empty for padding
    double cost = 0;              ///< US dollars
    double tokens = 0;            ///< tokens spent
    bool estimated = false;       ///< the cost is an estimate
    QMap<QString, double> models; ///< cost by model id
    bool isEmpty = false;         ///< padding, without data

    bool operator==(const Bar &) const = default;
};
