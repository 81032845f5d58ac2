#pragma once

#include "formats/TimePoint.h"
#include <QString>

class Strings;

/// What a rate-limit window of this length is called: "5 hours" and "Week" in words, any other as
/// hours or, where they are whole, days: "30h", "1d".
[[nodiscard]] QString windowLabel(Seconds length, const Strings &strings);
