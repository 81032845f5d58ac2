#pragma once

#include "formats/TimePoint.h"

struct Limits;

/// Requires what every source promises of limits, and of what is shown of them where their windows
/// have these lengths.
void lookAt(const Limits &limits, Seconds shorter, Seconds longer);
