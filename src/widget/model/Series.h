#pragma once

#include "widget/model/Bar.h"
#include "widget/model/LegendItem.h"
#include <QList>

/// One page of the history chart.
struct Series {
    QList<Bar> bars;          ///< oldest first
    QList<LegendItem> legend; ///< largest share first
    qint64 maxOffset = 0;     ///< how many bars the page can be scrolled back
    qint64 offset = 0;        ///< how many it is scrolled back

    bool operator==(const Series &) const = default;
};
