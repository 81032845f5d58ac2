#pragma once

#include "usage/history/ReadPlan.h"
#include "usage/history/tables/RolloutTable.h"

namespace usage {

/// Settles what becomes of that which one of Codex's files told before it was cut or overwritten:
/// it was used, so it stays as the tale of a file that is gone, unless another one tells it all.
class RolloutVersions final {
public:
    explicit RolloutVersions(Database &database);

    /// Whether what was told before has to stay beside `rollout`, which was read from the start.
    [[nodiscard]] bool mustStay(const PlannedFile &file, const Rollout &rollout);
    /// Files that were at its path before and told nothing more than `rollout` does.
    [[nodiscard]] std::vector<std::int64_t> toldBy(const Rollout &rollout, const PlannedFile &file);

private:
    RolloutTable m_rollouts;
};

} // namespace usage
