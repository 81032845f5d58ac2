#pragma once

#include "indexer/Database.h"

#include <filesystem>

namespace indexer {

/// Copies what can still be read of a damaged history into a new one. Everything of which the
/// transcripts are still there is to be read from these again.
void salvage(const std::filesystem::path &damaged, Database &history);

} // namespace indexer
