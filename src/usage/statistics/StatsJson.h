#pragma once

#include "usage/statistics/Statistics.h"

#include <string>

namespace usage {

/// The statistics file: the same bytes for the same statistics.
[[nodiscard]] std::string statsJson(const Statistics &statistics);

} // namespace usage
