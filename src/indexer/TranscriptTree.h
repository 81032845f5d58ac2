#pragma once

#include "indexer/Skips.h"

#include <filesystem>
#include <vector>

namespace indexer {

/// All transcripts below a projects folder, in an order that depends on their names only. Links
/// are followed, but each folder and file is taken once. What cannot be read goes into `skips`.
[[nodiscard]] std::vector<std::filesystem::path> findTranscripts(
    const std::filesystem::path &projects, Skips &skips);

} // namespace indexer
