#pragma once

#include "formats/TimePoint.h"
#include "widget/sources/PeriodRows.h"

/// A row of the history with the moment its period begins.
struct RawPoint {
    TimePoint date;
    const PeriodRows *rows = nullptr; ///< of the statistics, which are there as long
    qsizetype place = 0;

    [[nodiscard]] PeriodRow row() const { return rows->at(place); }
};
