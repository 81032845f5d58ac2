#pragma once

#include "indexer/Lineage.h"
#include "indexer/RolloutFile.h"

#include <vector>

namespace indexer {

/// What of a file is its thread's own, and no copy from the threads it comes from.
struct OwnPart {
    std::size_t begin = 0; // the first of its own counters
    bool isKnown = false;  // whether copies would have been noticed
};

/// Tells it of each file. `files` are all those of the threads' families.
[[nodiscard]] std::vector<OwnPart> ownParts(
    const std::vector<RolloutFile> &files, const Lineage &lineage);

} // namespace indexer
