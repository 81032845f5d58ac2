#pragma once

#include "formats/TimeStamp.h"

#include <filesystem>
#include <string>

namespace indexer {

/// One line of JSON for a status bar: "text", "tooltip", "class" ("normal", "warning", "critical",
/// "stale" or "none") and "percentage", a whole number. It is made of DATA/stats.json and the limit
/// files as they are; what is missing or damaged there is left out. Both texts are Pango markup.
[[nodiscard]] std::string waybarLine(
    const std::filesystem::path &data, const std::filesystem::path &claude, TimePoint now);

} // namespace indexer
