#pragma once

#include "indexer/Skips.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace indexer {

/// All transcripts below a projects folder, in an order that depends on their names only. Links
/// are followed, but each folder and file is taken once. What cannot be read goes into `skips`.
[[nodiscard]] std::vector<std::filesystem::path> findTranscripts(
    const std::filesystem::path &projects, Skips &skips);

/// Why the projects in Claude Code's folder cannot be read, in words. That there are none yet is no
/// reason; that the folder itself is missing is none if it `mayBeMissing`.
[[nodiscard]] std::optional<std::string> whyUnreadable(
    const std::filesystem::path &claude, bool mayBeMissing);

} // namespace indexer
