#pragma once

#include "formats/TimePoint.h"
#include <QString>

class Strings;

/// A moment that has passed, the shorter the nearer it is to `now`: "today 15:20", "yesterday
/// 15:20", weekday and clock time within a week, then date and clock time.
[[nodiscard]] QString dayAndTime(const Strings &strings, TimePoint moment, TimePoint now);
