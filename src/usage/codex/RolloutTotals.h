#pragma once

#include "usage/codex/Rollout.h"

namespace usage {

/// Follows a rollout's totals, and finds which of them the records of responses tell of.
class RolloutTotals final {
public:
    /// Goes on with what was read so far. `rollout` has to stay where it is.
    explicit RolloutTotals(Rollout &rollout);

    /// Takes up what a record told, of a response of a thread, 0 for the rollout's own. `isFirst`
    /// tells that no record stood before it.
    void addRecord(const RolloutUsage &usage, TextId thread, bool isFirst);
    /// Takes up a total; `last` is what its line says of the last response alone.
    void addCounter(RolloutCounter counter, const RolloutUsage &last);

private:
    [[nodiscard]] bool cover(const RolloutUsage &usage, bool isFirst);
    void addCopied(TextId thread, bool isInLast);
    void reconsiderFirst(const RolloutUsage &growth);

    Rollout &m_rollout;
    RolloutUsage m_highest; // total so far
    RolloutUsage m_growth;  // of the last counter
};

} // namespace usage
