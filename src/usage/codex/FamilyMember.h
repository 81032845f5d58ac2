#pragma once

#include "usage/codex/Rollout.h"

#include <vector>

namespace usage {

/// A rollout among others, with their common numbers for its texts.
struct FamilyMember {
    Rollout rollout;
    TextId thread = 0;
    std::vector<TextId> texts; // by the rollout's own numbers

    [[nodiscard]] TextId threadOf(const RolloutRecord &record) const;
    /// The settings of that number in the rollout.
    [[nodiscard]] RolloutSettings settings(std::uint32_t number) const;
};

[[nodiscard]] FamilyMember rolloutFile(Rollout rollout, TextPool &names);

} // namespace usage
