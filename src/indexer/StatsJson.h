#pragma once

#include "indexer/Statistics.h"

#include <string>

namespace indexer {

/// The statistics file: the same bytes for the same statistics.
[[nodiscard]] std::string statsJson(const Statistics &statistics);

} // namespace indexer
