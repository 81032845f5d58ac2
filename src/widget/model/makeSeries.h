#pragma once

#include "widget/model/HistoryTab.h"
#include "widget/model/RawPoint.h"
#include "widget/model/Series.h"

class Strings;

/// The page of a tab's points that ends `offset` points before the newest; an offset that is out of
/// range is brought into it.
[[nodiscard]] Series makeSeries(const QList<RawPoint> &points, HistoryTab tab, qint64 offset,
    const Strings &strings, TimePoint now);
