#pragma once

#include "usage/codex/FamilyMember.h"
#include "usage/codex/Lineage.h"

#include <vector>

namespace usage {

/// What of a file is its thread's own, and no copy from the threads it comes from.
struct OwnPart {
    std::size_t begin = 0;  // the first of its own counters
    bool isKnown = false;   // whether copies would have been noticed
    bool tellsMost = false; // of the thread's files
    std::size_t untold = 0; // the first own one that no file of the thread which tells more has
    /// A thread that it comes from, and the copied counters that nothing else tells of it.
    TextId ancestor = 0;
    std::vector<std::size_t> copies;
};

/// Tells it of each file. `files` are all those of the threads' families. A thread has several
/// files when it was moved, copied, compressed or overwritten: each counts like a fork of those
/// before it, so that the totals that they share count once.
[[nodiscard]] std::vector<OwnPart> ownParts(
    const std::vector<FamilyMember> &files, const Lineage &lineage);

} // namespace usage
