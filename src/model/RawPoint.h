#pragma once

#include "core/TimePoint.h"
#include "sources/Stats.h"

/// A row of the history with the moment its period begins.
struct RawPoint {
    TimePoint date;
    PeriodRow row;

    bool operator==(const RawPoint &) const = default;
};
