#pragma once

#include "usage/history/tables/Database.h"

#include <filesystem>
#include <optional>
#include <string>

namespace usage {

/// Copies what can still be read of a damaged history into a new one. Everything of which the
/// transcripts are still there is to be read from these again. Says what else than damage kept it
/// from reading, if anything; then what was copied is not all.
[[nodiscard]] std::optional<std::string> salvage(
    const std::filesystem::path &damaged, Database &history);

} // namespace usage
