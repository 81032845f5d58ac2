#pragma once

#include "widget/model/HistoryTab.h"
#include "widget/model/RawPoint.h"
#include "widget/sources/Stats.h"

/// The dated rows of a tab in the file's order, from the first that cost something. A row whose
/// date makes no sense is left out; the sessions tab has none. They hold on to the rows of `stats`.
[[nodiscard]] QList<RawPoint> allPoints(const Stats &stats, HistoryTab tab);
QList<RawPoint> allPoints(Stats &&stats, HistoryTab tab) = delete;
